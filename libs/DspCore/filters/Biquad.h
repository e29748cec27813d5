// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

namespace DspCore
{
/// Second-order filter section in transposed direct form II.
///
/// The coefficients are the bilinear transforms of the analog prototypes with a prewarped cut-off
/// K = tan(pi fc) (see Zoelzer, DAFX, table of second-order and shelving filters). Real and
/// imaginary part are filtered alike and apart. A new section is all zero and disabled. Not
/// thread-safe.
class Biquad
{
public:
    enum class Type : int {
        LowPass = 0,
        HighPass = 1,
        BandPass = 2,
        Notch = 3,
        Peak = 4,
        LowShelf = 5,
        HighShelf = 6,
    };

    /// y[n] = a0 x[n] + a1 x[n-1] + a2 x[n-2] - b1 y[n-1] - b2 y[n-2]
    struct Coefficients
    {
        double a0 = 0.0;
        double a1 = 0.0;
        double a2 = 0.0;
        double b1 = 0.0;
        double b2 = 0.0;
    };

    /// Designs the section and zeroes its state; the enable flag stays.
    ///
    /// fc: cut-off or centre in cycles per sample. q: quality, at least 0.1; the shelves have a
    /// fixed slope. gainDb: gain of Peak and of the shelves, boost from 0 up, cut below; these
    /// types also set the output scale to 10^(-|gainDb| / 20), which the complex process() applies.
    /// An unknown type is reported; coefficients stay and the scale is 1.
    void init(Type type, double fc, double q, double gainDb);

    const Coefficients &coefficients() const { return mCoefficients; }

    /// A disabled section passes blocks through.
    void setEnable(bool enable) { mEnable = enable; }
    bool enable() const { return mEnable; }

    /// Zeroes the state; the coefficients stay.
    void clear();

    /// Filter a block in place: a real signal (it shares the state of the real part), a complex one
    /// with the output scale applied, a complex one without. False with a warning for a null buffer
    /// or a length below 1. Allocate nothing.
    bool process(double *buffer, int length);
    bool process(COMPLEX *buffer, int length);
    bool process2(COMPLEX *buffer, int length);

    /// One sample, whether enabled or not, without output scale.
    void filtering(double &sample);
    void filtering(COMPLEX &sample);

private:
    struct Quadratic;

    void design(const Quadratic &numerator, const Quadratic &denominator, double k);
    void run(double *buffer, int length);
    void run(COMPLEX *buffer, int length);
    static double step(const Coefficients &c, double x, double &state1, double &state2);

    double mScale = 0.0; // gain after the filter, of the complex process() only
    Coefficients mCoefficients;
    COMPLEX mState1{0.0, 0.0};
    COMPLEX mState2{0.0, 0.0};
    COMPLEX mOutput{0.0, 0.0}; // the last one
    bool mEnable = false;
};
} // namespace DspCore
