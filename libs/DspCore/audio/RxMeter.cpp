// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/RxMeter.h"

#include "processor/Clones.h"

#include <cmath>

namespace DspCore
{
namespace
{
constexpr double kCalibrationDb = -10.0; // full scale to dBm
constexpr double kPaceSamples = 512.0;   // of a block, at 48 kHz in and out
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

double RxMeter::levelDbm(double meanPower)
{
    return 10.0 * std::log10(meanPower) + kCalibrationDb;
}

/// The power is averaged over the time before its logarithm is taken: a mean of the logarithms of
/// a few samples each would read noise lower than one of longer blocks does, by up to 2.5 dB.
void RxMeter::smoothByTime(double sum, int length, double rate)
{
    mSum += sum;
    mSamples += length;
    const double samples = kPaceSamples * rate / kPaceRate;
    if (mSamples < samples)
        return;
    const double keep = std::pow(0.95, mSamples / samples);
    mDbm = keep * mDbm + (1.0 - keep) * levelDbm(mSum / mSamples);
    mSum = 0.0;
    mSamples = 0;
}

void RxMeter::process(const COMPLEX *buffer, int length, double rate)
{
    if (buffer == nullptr || length <= 0)
        return;
    const COMPLEX sum = sumOfSquares(buffer, length);
    if (mByTime)
        smoothByTime(sum.re + sum.im, length, rate);
    else
        mDbm = 0.95 * mDbm + 0.05 * levelDbm((sum.re + sum.im) / length);
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
