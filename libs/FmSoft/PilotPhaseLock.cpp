// SPDX-License-Identifier: GPL-3.0-or-later
#include "FmSoft/PilotPhaseLock.h"

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
    : mMinimumFrequency((frequency - bandwidth) * kTwoPi),
      mMaximumFrequency((frequency + bandwidth) * kTwoPi), mFrequency(frequency * kTwoPi),
      mMinimumSignal(minimumSignal), mLockDelay(static_cast<std::int32_t>(20.0 / bandwidth))
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

void PilotPhaseLock::process(const SampleVector &in, SampleVector &out)
{
    out.resize(in.size());
    mPpsEvents.clear();
    mPilotLevel = kUnseenLevel;

    for (std::size_t n = 0; n < in.size(); ++n) {
        const double s = std::sin(mPhase);
        const double c = std::cos(mPhase);
        out[n] = 2.0 * s * c;

        const double x = in[n];
        const double i = mPhasorB0 * s * x - mPhasorA1 * mI1 - mPhasorA2 * mI2;
        const double q = mPhasorB0 * c * x - mPhasorA1 * mQ1 - mPhasorA2 * mQ2;
        mI2 = mI1;
        mI1 = i;
        mQ2 = mQ1;
        mQ1 = q;

        // Outside of +-45 degrees only the sign is of use.
        const double error = i > std::abs(q) ? q / i : (q > 0.0 ? 1.0 : -1.0);
        mPilotLevel = std::min(mPilotLevel, i);

        mFrequency += mLoopB0 * error + mLoopB1 * mLastError;
        mLastError = error;
        mFrequency = std::max(std::min(mFrequency, mMaximumFrequency), mMinimumFrequency);

        mPhase += mFrequency;
        if (mPhase > kTwoPi) {
            mPhase -= kTwoPi;
            countPeriod(n, in.size());
        }
    }
    judgeLock(in.size());
    mSampleCount += in.size();
}

void PilotPhaseLock::countPeriod(std::size_t position, std::size_t length)
{
    if (++mPilotPeriods != kPilotHz)
        return;
    mPilotPeriods = 0;
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
