// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/demodulators/DemodulatorNFM.h"

#include "DspCore/demodulators/LoopDetector.h"
#include "processor/Clones.h"
#include "signal_primitives/ipps.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

namespace DspCore
{
namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kLoopWidth = 0.3; // of the deviation
constexpr double kLoopRangeHz = 1000.0;
constexpr double kDcTimeMs = 200.0;
constexpr double kLowPassHz = 7000.0;
constexpr double kLowPassQuality = 0.707;
constexpr double kOutputGain = 4.0;
} // namespace

DemodulatorNFM::DemodulatorNFM()
{
    init();
}

void DemodulatorNFM::setSampleRate(double rate)
{
    mSampleRate = rate;
    init();
}

void DemodulatorNFM::setDeviation(double deviation)
{
    mDeviation = deviation;
    init();
}

void DemodulatorNFM::init()
{
    mAlpha = mDeviation * kLoopWidth * kTwoPi / mSampleRate;
    mBeta = mAlpha * 0.25 * mAlpha;
    mOutputScale = (mSampleRate * 0.45 / std::numbers::pi) / mDeviation;
    mDcEstimate = 0.0;
    mDcCoefficient = 1.0 - std::exp(-1000.0 / (mSampleRate * kDcTimeMs));
    mDcComplement = 1.0 - mDcCoefficient;
    mPhase = 0.0;
    mFrequency = 0.0;
    mHighestFrequency = kTwoPi * kLoopRangeHz / mSampleRate;
    mLowestFrequency = -mHighestFrequency;
    mLowPass.setEnable(true);
    mLowPass.init(Biquad::Type::LowPass, kLowPassHz / mSampleRate, kLowPassQuality, 0.0);
    mDcBlock.init(0.0);
}

void DemodulatorNFM::clear()
{
    mDcEstimate = 0.0;
    mFrequency = 0.0;
    mDcBlock.clear();
    mLowPass.clear();
}

void DemodulatorNFM::restart()
{
    clear();
    mPhase = 0.0;
}

void DemodulatorNFM::process(COMPLEX *buffer, int length)
{
    if (buffer == nullptr || length < 1)
        return;
    assert(length <= SIGNAL_MAX_SIZE);

    LoopDetector::angles(buffer, mAngles.data(), length);
    follow(buffer, length);
    mPhase = std::fmod(mPhase, kTwoPi);

    mDcBlock.process(buffer, length);
    mLowPass.process2(buffer, length);
    ippsMulC_64f_I(kOutputGain, &buffer[0].re, 2 * length);
}

PROCESSOR_CLONES void DemodulatorNFM::follow(COMPLEX *audio, int length)
{
    const double *const angles = mAngles.data();
    double phase = mPhase;
    double frequency = mFrequency;
    double dcEstimate = mDcEstimate;
    for (int n = 0; n < length; ++n) {
        const double error = -LoopDetector::error(angles[n], phase);
        frequency = std::clamp(frequency + mBeta * error, mLowestFrequency, mHighestFrequency);
        phase += mAlpha * error + frequency;
        dcEstimate = mDcCoefficient * frequency + mDcComplement * dcEstimate;
        const double value = (frequency - dcEstimate) * mOutputScale;
        audio[n] = {value, value};
    }
    mDcEstimate = dcEstimate;
    mFrequency = frequency;
    mPhase = phase;
}
} // namespace DspCore
