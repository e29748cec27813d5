// SPDX-License-Identifier: GPL-3.0-or-later
#include "FmSoft/PilotPhaseLock.h"

#include "processor/Clones.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr std::int32_t kPilotHz = 19000; // periods in a second
constexpr double kUnseenLevel = 1000.0;  // above any pilot, so that the block's smallest wins
constexpr std::size_t kEventsAhead = 16; // more than a block can hold at any rate
} // namespace

PilotPhaseLock::PilotPhaseLock(double frequency, double bandwidth, double minimumSignal)
    : mNominalFrequency(frequency * kTwoPi), mMinimumFrequency((frequency - bandwidth) * kTwoPi),
      mMaximumFrequency((frequency + bandwidth) * kTwoPi), mPhasor(mNominalFrequency),
      mPhasorSteps(bandwidth * kTwoPi <= FmSoft::SteadyPhasor::kLargestDeviation
              ? FmSoft::SteadyPhasor::kSteps
              : 1),
      mFrequency(mNominalFrequency), mMinimumSignal(minimumSignal),
      mLockDelay(static_cast<std::int32_t>(20.0 / bandwidth))
{
    const double p1 = std::exp(-1.146 * bandwidth * kTwoPi);
    const double p2 = std::exp(-5.331 * bandwidth * kTwoPi);
    mPhasorA1 = -p1 - p2;
    mPhasorA2 = p1 * p2;
    mPhasorB0 = 1.0 + mPhasorA1 + mPhasorA2;

    const double q1 = std::exp(-0.1153 * bandwidth * kTwoPi);
    mLoopB0 = 0.62 * bandwidth * kTwoPi;
    mLoopB1 = -mLoopB0 * q1;
    mPpsEvents.reserve(kEventsAhead);
}

void PilotPhaseLock::restart()
{
    mI1 = mI2 = mQ1 = mQ2 = 0.0;
    mLastError = 0.0;
    mFrequency = mNominalFrequency;
    mPhase = 0.0;
    mLockCount = 0;
}

void PilotPhaseLock::process(const SampleVector &in, SampleVector &out)
{
    out.resize(in.size());
    mPpsEvents.clear();
    mPilotLevel = kUnseenLevel;
    follow(in.data(), out.data(), in.size());
    judgeLock(in.size());
    mSampleCount += in.size();
}

PROCESSOR_CLONES
void PilotPhaseLock::follow(const double *in, double *out, std::size_t length)
{
    FmSoft::SteadyPhasor phasor = mPhasor;
    double i1 = mI1;
    double i2 = mI2;
    double q1 = mQ1;
    double q2 = mQ2;
    double frequency = mFrequency;
    double lastError = mLastError;
    double phase = mPhase;
    double level = mPilotLevel;
    std::int32_t periods = mPilotPeriods;
    std::size_t restart = 0;
    for (std::size_t n = 0; n < length; ++n) {
        if (n == restart) {
            phasor.start(phase);
            restart += mPhasorSteps;
        }
        const double s = phasor.sine();
        const double c = phasor.cosine();
        out[n] = 2.0 * s * c;

        const double x = mPhasorB0 * in[n];
        const double i = s * x - (mPhasorA1 * i1 + mPhasorA2 * i2);
        const double q = c * x - (mPhasorA1 * q1 + mPhasorA2 * q2);
        i2 = i1;
        i1 = i;
        q2 = q1;
        q1 = q;

        // Outside of +-45 degrees only the sign is of use.
        const double ratio = q / i;
        const double error = i > std::abs(q) ? ratio : (q > 0.0 ? 1.0 : -1.0);
        level = std::min(level, i);

        frequency += mLoopB1 * lastError + mLoopB0 * error;
        lastError = error;
        frequency = std::max(std::min(frequency, mMaximumFrequency), mMinimumFrequency);

        phasor.turn(frequency - mNominalFrequency);
        phase += frequency;
        const bool wraps = phase > kTwoPi;
        phase = wraps ? phase - kTwoPi : phase;
        periods += wraps;
        if (periods == kPilotHz) {
            periods = 0;
            countSecond(n, length);
        }
    }
    mI1 = i1;
    mI2 = i2;
    mQ1 = q1;
    mQ2 = q2;
    mFrequency = frequency;
    mLastError = lastError;
    mPhase = phase;
    mPilotLevel = level;
    mPilotPeriods = periods;
}

void PilotPhaseLock::countSecond(std::size_t position, std::size_t length)
{
    if (!locked())
        return;
    mPpsEvents.push_back({mPpsIndex, mSampleCount + position,
        static_cast<double>(position) / static_cast<double>(length)});
    ++mPpsIndex;
}

void PilotPhaseLock::judgeLock(std::size_t length)
{
    if (2.0 * mPilotLevel <= mMinimumSignal)
        mLockCount = 0;
    else if (mLockCount < mLockDelay)
        mLockCount += static_cast<std::int32_t>(length);

    if (mLockCount < mLockDelay) {
        mPilotPeriods = 0;
        mPpsIndex = 0;
        mPpsEvents.clear();
    }
}
