// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/noise/NoiseBlanker.h"

namespace DspCore
{
namespace
{
constexpr int kBlankedSamples = 7;
constexpr double kPowerWeight = 0.001;
constexpr double kMeanWeight = 0.25;

double power(COMPLEX x)
{
    return x.re * x.re + x.im * x.im;
}

double smoothed(double average, double value)
{
    return kPowerWeight * value + 0.999 * average;
}
} // namespace

void NoiseBlanker::clear()
{
    mPowerAverage = 1.0;
    mMean = {0.0, 0.0};
    mRing.fill({0.0, 0.0});
    mRead = 2;
    mWrite = 0;
    mHang = 0;
}

void NoiseBlanker::process(COMPLEX *buffer, int length)
{
    if (buffer == nullptr || length < 1)
        return;
    if (mEnableNb1)
        blank(buffer, length);
    if (mEnableNb2)
        replace(buffer, length);
}

void NoiseBlanker::blank(COMPLEX *buffer, int length)
{
    double average = mPowerAverage;
    for (int n = 0; n < length; ++n) {
        mRing[mWrite] = buffer[n];
        const double p = power(buffer[n]);
        average = smoothed(average, p);
        if (mHang == 0 && p > mThresholdNb1 * average)
            mHang = kBlankedSamples;
        if (mHang > 0) {
            --mHang;
            buffer[n] = {0.0, 0.0};
        } else {
            buffer[n] = mRing[mRead];
        }
        mRead = (mRead + kRingSize - 1) % kRingSize;
        mWrite = (mWrite + kRingSize - 1) % kRingSize;
    }
    mPowerAverage = average;
}

void NoiseBlanker::replace(COMPLEX *buffer, int length)
{
    double average = mPowerAverage;
    COMPLEX mean = mMean;
    for (int n = 0; n < length; ++n) {
        const double p = power(buffer[n]);
        average = smoothed(average, p);
        mean.re = kMeanWeight * buffer[n].re + 0.75 * mean.re;
        mean.im = kMeanWeight * buffer[n].im + 0.75 * mean.im;
        if (p > mThresholdNb2 * average)
            buffer[n] = mean;
    }
    mPowerAverage = average;
    mMean = mean;
}
} // namespace DspCore
