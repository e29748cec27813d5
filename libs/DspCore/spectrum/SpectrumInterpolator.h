// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/spectrum/LineKernels.h"

#include <vector>

namespace DspCore
{
/// Stretches a line to another number of points along cubics through four neighbours (Lagrange's
/// interpolation, so cubic curves come out exactly).
///
/// Output j is the input curve at (j + 3) inCount / (outCount + 3) - 2. The curve starts from
/// silence: points before the first count as 0, which bends the first output. Single precision
/// inside, also for double lines. Not thread-safe. Allocates when a line is longer than any before
/// and than 65536 points. Where the outputs lie is reckoned anew when a count changes, and takes
/// some times as long as a line.
class SpectrumInterpolator
{
public:
    SpectrumInterpolator();

    /// Makes outCount points of inCount ones; `out` may be the line that `in` points into. Equal
    /// counts are a copy. Without input `out` stays as it is.
    void process(float *in, unsigned int inCount, float *out, unsigned int outCount);
    void process(double *in, unsigned int inCount, double *out, unsigned int outCount);

private:
    template <typename Real>
    void resample(const Real *in, unsigned int inCount, Real *out, unsigned int outCount);
    void place(unsigned int inCount, unsigned int outCount);
    void placeNext(int index, double t);
    void stretch(const CubicPlaces &places, float *out, int count);
    void stretch(const CubicPlaces &places, double *out, int count);

    // The places of the outputs, which depend on the counts alone. None beyond those asked for.
    unsigned int mInCount = 0;
    unsigned int mOutCount = 0;
    std::vector<int> mIndex;
    std::vector<float> mWeight0;
    std::vector<float> mWeight1;
    std::vector<float> mWeight3;

    std::vector<float> mLine;    // the input after three points of silence
    std::vector<float> mDoubles; // outputs of a double line
};
} // namespace DspCore
