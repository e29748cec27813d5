// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/RxMeter.h"

#include "processor/Clones.h"

#include <cmath>

namespace DspCore
{
namespace
{
constexpr double kCalibrationDb = -10.0; // full scale to dBm
constexpr int kLanes = 16; // even: real and imaginary parts keep to lanes of their own

// Sums of the squares of the real and of the imaginary parts; in lanes, as the order of plain
// summation would forbid vectors.
PROCESSOR_CLONES COMPLEX sumOfSquares(const COMPLEX *buffer, int length)
{
    const double *parts = &buffer->re;
    const int count = 2 * length;
    double lanes[kLanes] = {};
    int i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        for (int lane = 0; lane < kLanes; ++lane)
            lanes[lane] += parts[i + lane] * parts[i + lane];
    }
    COMPLEX sum{0.0, 0.0};
    for (; i < count; i += 2) {
        sum.re += parts[i] * parts[i];
        sum.im += parts[i + 1] * parts[i + 1];
    }
    for (int lane = 0; lane < kLanes; lane += 2) {
        sum.re += lanes[lane];
        sum.im += lanes[lane + 1];
    }
    return sum;
}
} // namespace

void RxMeter::process(const COMPLEX *buffer, int length)
{
    if (buffer == nullptr || length <= 0)
        return;
    const COMPLEX sum = sumOfSquares(buffer, length);
    const double level = 10.0 * std::log10((sum.re + sum.im) / length) + kCalibrationDb;
    mDbm = 0.95 * mDbm + 0.05 * level;
    if (mRestarts && !std::isfinite(mDbm))
        mDbm = kFirstDbm;
    mPower = {sum.re / length, sum.im / length};
}

double RxMeter::adcRe() const
{
    return 10.0 * std::log10(mPower.re);
}

double RxMeter::adcIm() const
{
    return 10.0 * std::log10(mPower.im);
}
} // namespace DspCore
