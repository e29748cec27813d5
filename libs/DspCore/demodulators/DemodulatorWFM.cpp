// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/demodulators/DemodulatorWFM.h"

#include "signal_primitives/FastArctangent.h"
#include "signal_primitives/ipps.h"
#include "vm_library/source/log/Log.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace DspCore
{
namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kPilotHz = 19000.0;
constexpr double kPilotRangeHz = 20.0;
constexpr double kNotchQuality = 300.0;
constexpr double kBandPassQuality = 50.0; // at 192 kHz
constexpr double kAudioHz = 14000.0;
constexpr double kAudioQuality = 0.707;
constexpr double kFullRateHz = 192000.0;
constexpr double kScaledAboveHz = 192.0;
constexpr double kDeemphasisUsa = 75e-6;                   // s
constexpr double kDeemphasisElsewhere = 50e-6;             // s
constexpr double kLoopBandwidth = 14.14;                   // 20 Hz times the damping of 0.707
constexpr double kFourDampingSquared = 1.9993959999999997; // 4 * 0.707^2
constexpr double kLockedBelow = 0.05;
constexpr double kDifferenceGain = 4.0;
constexpr double kOutputGain = 0.3;

// 1 / sqrt(m) by the exponent trick and one Newton step, single precision, error below 0.2 %
// (C. Lomont, "Fast inverse square root", 2003). It only levels the discriminator's input.
float inverseSquareRoot(float m)
{
    const auto guess = std::bit_cast<float>(0x5F3759DBu - (std::bit_cast<std::uint32_t>(m) >> 1));
    return (-0.5f * m * guess * guess + 1.5f) * guess;
}
} // namespace

DemodulatorWFM::DemodulatorWFM()
{
    for (Biquad *filter : {&mAudioLowPass, &mSpareLowPass, &mPilotBandPass, &mPilotNotch})
        filter->setEnable(true);
    mPilotFir.init(0.001, 0.499, 500);
    setSampleRate(mSampleRate);
}

void DemodulatorWFM::setSampleRate(double rate)
{
    mSampleRate = rate;
    mOutputScale = rate > kScaledAboveHz ? rate / kFullRateHz : 1.0;
    designDeemphasis();
    mPilotQuality = mOutputScale * kBandPassQuality;

    const double pilot = kPilotHz / rate;
    mPilotNotch.init(Biquad::Type::Notch, pilot, kNotchQuality, 0.0);
    mPilotBandPass.init(Biquad::Type::BandPass, pilot, mPilotQuality, 0.0);
    for (Biquad *lowPass : {&mAudioLowPass, &mSpareLowPass})
        lowPass->init(Biquad::Type::LowPass, kAudioHz / rate, kAudioQuality, 0.0);
    initPilotPll();
    clear();
}

void DemodulatorWFM::designDeemphasis()
{
    const double seconds = mUsa ? kDeemphasisUsa : kDeemphasisElsewhere;
    mDeemphasisFactor = 1.0 - std::exp(-1.0 / (mSampleRate * seconds));
}

void DemodulatorWFM::setUsaRegion(bool usa)
{
    if (usa == mUsa)
        return;
    mUsa = usa;
    designDeemphasis();
}

void DemodulatorWFM::initPilotPll()
{
    const double perHz = kTwoPi / mSampleRate;
    mPhase = 0.0;
    mFrequency = -kPilotHz; // far below the range: the first step takes it to the lower limit
    mLowestFrequency = -(kPilotHz + kPilotRangeHz) * perHz;
    mHighestFrequency = -(kPilotHz - kPilotRangeHz) * perHz;
    mAlpha = kLoopBandwidth * perHz;
    mBeta = mAlpha * mAlpha / kFourDampingSquared;
    mLockError = 0.0;
    mLockFactor = 1.0 - std::exp(-1.0 / (0.5 * mSampleRate));
}

void DemodulatorWFM::clear()
{
    mPrevious = {0.0, 0.0};
    mDeemphasisState = {0.0, 0.0};
    mPilotFir.clear();
    for (Biquad *filter : {&mAudioLowPass, &mSpareLowPass, &mPilotBandPass, &mPilotNotch})
        filter->clear();
}

void DemodulatorWFM::demodulation(COMPLEX *buffer, int length)
{
    COMPLEX previous = mPrevious;
    for (int n = 0; n < length; ++n) {
        const COMPLEX x = buffer[n];
        COMPLEX z{x.re * previous.re - x.im * previous.im, x.re * previous.im + x.im * previous.re};
        const float scale = inverseSquareRoot(static_cast<float>(z.re * z.re + z.im * z.im));
        if (scale > 0.0f) {
            z.re *= scale;
            z.im *= scale;
        }
        const double step =
            Velmora::fastArctangent(static_cast<float>(z.im), static_cast<float>(z.re));
        previous = {x.re, -x.im};
        buffer[n] = {step, step};
    }
    mPrevious = previous;
}

bool DemodulatorWFM::processPilotPll(const COMPLEX *buffer, int length)
{
    assert(length <= kWorkSize);
    for (int n = 0; n < length; ++n) {
        const double c = std::cos(mPhase);
        const double s = std::sin(mPhase);
        const auto y = static_cast<float>(c * buffer[n].im + s * buffer[n].re);
        const auto x = static_cast<float>(c * buffer[n].re - s * buffer[n].im);
        const double error = -Velmora::fastArctangent(y, x);
        mFrequency = std::clamp(mFrequency + mBeta * error, mLowestFrequency, mHighestFrequency);
        mPhase += mAlpha * error + mFrequency;
        mPilotPhase[static_cast<std::size_t>(n)] = mPhase;
        mLockError = mLockFactor * error * error + (1.0 - mLockFactor) * mLockError;
    }
    mPhase = std::fmod(mPhase, kTwoPi);
    return mLockError < kLockedBelow;
}

void DemodulatorWFM::addStereo(COMPLEX *buffer, int length)
{
    assert(length <= kWorkSize);
    ippsCopy_64fc(buffer, mPilot.data(), length);
    mPilotFir.process(mPilot.data(), length);
    mPilotBandPass.process(mPilot.data(), length);
    mLocked = processPilotPll(mPilot.data(), length);
    if (!mLocked)
        return;
    ippsMulC_64f_I(2.0, mPilotPhase.data(), length);
    ippsSin_64f_A26(mPilotPhase.data(), mPilotSine.data(), length);
    ippsMulC_64f_I(kDifferenceGain, mPilotSine.data(), length);
    for (int n = 0; n < length; ++n) {
        const double mono = buffer[n].re;
        const double difference = mono * mPilotSine[static_cast<std::size_t>(n)];
        buffer[n] = {mono - difference, (mono - difference) + difference};
    }
}

void DemodulatorWFM::deemphasis(COMPLEX *buffer, int length)
{
    const double keep = 1.0 - mDeemphasisFactor;
    COMPLEX y = mDeemphasisState;
    for (int n = 0; n < length; ++n) {
        y.re = mDeemphasisFactor * buffer[n].re + keep * y.re;
        y.im = mDeemphasisFactor * buffer[n].im + keep * y.im;
        buffer[n] = y;
    }
    mDeemphasisState = y;
}

void DemodulatorWFM::process(COMPLEX *buffer, int length)
{
    if (buffer == nullptr || length < 1) {
        vm::log::warning(Q_FUNC_INFO, __LINE__, " : Incorrect input parameters!");
        return;
    }
    demodulation(buffer, length);
    if (mStereo)
        addStereo(buffer, length);
    mPilotNotch.process(buffer, length);
    deemphasis(buffer, length);
    mAudioLowPass.process2(buffer, length);
    ippsMulC_64f_I(mOutputScale * kOutputGain, &buffer->re, 2 * length);
}
} // namespace DspCore
