// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <vector>

namespace DspCore
{
/// Stretches a line to another number of points along cubics through four neighbours (Lagrange's
/// interpolation, so cubic curves come out exactly).
///
/// Output j is the input curve at (j + 3) inCount / (outCount + 3) - 2. The curve starts from
/// silence: points before the first count as 0, which bends the first output. Single precision
/// inside, also for double lines. Not thread-safe. Allocates when the output is longer than any
/// before, from 65526 points on.
class SpectrumInterpolator
{
public:
    SpectrumInterpolator();

    /// Makes outCount points of inCount ones; `out` may be the line that `in` points into. Equal
    /// counts are a copy. Without input `out` stays as it is.
    void process(float *in, unsigned int inCount, float *out, unsigned int outCount);
    void process(double *in, unsigned int inCount, double *out, unsigned int outCount);

private:
    /// ((a t + b) t + c) t + d through four neighbours: y2 at t = 0, y1 at -1, y3 at 1, y0 at -2.
    struct Cubic
    {
        double a, b, c, d;

        static Cubic through(double y0, double y1, double y2, double y3)
        {
            const double a = 0.5 * (y1 - y2) + (y3 - y0) / 6.0;
            const double c = 0.5 * (y3 - y1) - a;
            return {a, (y3 - y2) - c - a, c, y2};
        }
        double at(double t) const { return ((a * t + b) * t + c) * t + d; }
    };

    template <typename Real>
    void resample(const Real *in, unsigned int inCount, Real *out, unsigned int outCount);
    template <typename Real>
    unsigned int fillScratch(const Real *in, unsigned int inCount);

    double mPosition = 0.0;   // of the next output after the present input, in lengths of the line
    double mInputStep = 0.0;  // in lengths of the line
    double mOutputStep = 0.0; // in lengths of the line
    double mInputCount = 0.0;
    std::vector<float> mScratch;
    std::array<float, 4> mHistory = {}; // oldest first
    Cubic mCubic = {};
};
} // namespace DspCore
