// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <cmath>
#include <cstdint>
#include <numbers>

namespace DspCore
{
/// The phase detector fastArctangent(turned sample) for a loop that waits for it.
///
///     plain      phase ─ sine, cosine ─ turn the sample ─ two divisions ─ error
///
///     here       angles of the samples, before the loop and side by side
///                phase ─ (+) ─ whole turns off ─┬──────────────── (-) ─ error
///                                               └─ quarter turns off ─ bend
///
/// Turning a sample by a phase adds the phase to its angle. What the rational arctangent gives for
/// it is the angle less a bend of 0.005 rad at most, which repeats every quarter turn: with r the
/// distance from the next axis and t = tan r, bend(r) = r - t / (1 + 0.28 t^2). A polynomial gives
/// it to 7e-12 rad, the angles are good to 1e-12: the error differs from the plain form by what
/// that form loses in single precision. Not thread-safe.
class LoopDetector
{
public:
    /// Stands for the angle of a sample that is zero in single precision; its error is 0.
    static constexpr double kNoAngle = 1e3;

    /// Angles of samples in radians, -pi..pi; not a number for infinity and what is no number.
    static void angles(const COMPLEX *samples, double *angles, int length);

    /// fastArctangent() of the sample with that angle turned by the phase, both in radians.
    [[gnu::always_inline]] static double error(double angle, double phase)
    {
        if (angle == kNoAngle)
            return 0.0;
        const double turned = phase + angle;
        const double wrapped = turned - kTurn * whole(turned * (1.0 / kTurn));
        const double r = turned - kQuarter * whole(turned * (1.0 / kQuarter));
        return wrapped - bend(r);
    }

private:
    static constexpr double kTurn = 2.0 * std::numbers::pi;
    static constexpr double kQuarter = 0.5 * std::numbers::pi;

    // Next integer. Adding the constant leaves it in the low bits of the mantissa.
    [[gnu::always_inline]] static double whole(double x)
    {
        constexpr double kRounder = 0x1.8p52;
        return (x + kRounder) - kRounder;
    }

    // Interpolated at Chebyshev's points of r^2, 0..(pi / 4)^2. Four pairs side by side, as the
    // loop waits.
    [[gnu::always_inline]] static double bend(double r)
    {
        const double u = r * r;
        const double u2 = u * u;
        const double low = (-0.053333333335684796 + 0.06826666690172506 * u)
            + (0.04265041532008146 + 0.014197668996053068 * u) * u2;
        const double high = (0.0022196561478383084 - 0.0006220298814906568 * u)
            - (0.0005535514912369678 + 0.00032786453998106407 * u) * u2;
        return r * u * (low + high * (u2 * u2));
    }
};
} // namespace DspCore
