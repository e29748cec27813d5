// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>

namespace FmSoft
{
/// A point on the unit circle that turns by nearly the same angle every step: sine and cosine of a
/// loop's phase without evaluating either.
///
///     next = now · exp(j (nominal + d))
///
///          now · exp(j nominal)     known as soon as `now` is, long before the loop has found d
///          · (cos d + j sin d)      by their power series to d^7, as d is small
///
/// A loop waits for the second product alone. For |d| up to kLargestDeviation what the series leave
/// out is below rounding (0.03^8 / 40320 = 2e-17). Rounding moves the point by some 1e-16 a step,
/// so start() sets it right every kSteps steps: the error stays below 1e-14.
class SteadyPhasor
{
public:
    static constexpr int kSteps = 64;
    static constexpr double kLargestDeviation = 0.03; // radians per step

    explicit SteadyPhasor(double nominal) : mStepRe(std::cos(nominal)), mStepIm(std::sin(nominal))
    { }

    void start(double phase)
    {
        mRe = std::cos(phase);
        mIm = std::sin(phase);
    }

    double sine() const { return mIm; }
    double cosine() const { return mRe; }

    /// Turns by nominal + deviation, in radians.
    [[gnu::always_inline]] void turn(double deviation)
    {
        const double re = mRe * mStepRe - mIm * mStepIm;
        const double im = mRe * mStepIm + mIm * mStepRe;
        const double square = deviation * deviation;
        const double fourth = square * square;
        const double cosineLess1 =
            square * (-1.0 / 2.0) + fourth * (1.0 / 24.0 - square * (1.0 / 720.0));
        const double sine = deviation
            + deviation * square
                * ((-1.0 / 6.0 + square * (1.0 / 120.0)) - fourth * (1.0 / 5040.0));
        mRe = (re + re * cosineLess1) - im * sine;
        mIm = (im + im * cosineLess1) + re * sine;
    }

private:
    double mStepRe;
    double mStepIm;
    double mRe = 1.0;
    double mIm = 0.0;
};
} // namespace FmSoft
