// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/ToneLock.h"

#include "DspCore/audio/SqlCtcss.h"

#include <algorithm>

namespace DspCore
{
namespace
{
constexpr double kHighestToneHz = 260.0; // shorter periods are noise
constexpr double kNewWeight = 0.1;
constexpr double kFindSeconds = 1.0 / 10.0;
constexpr double kLoseSeconds = 1.0 / 6.0;
} // namespace

void ToneLock::setSampleRate(double rate)
{
    mSampleRate = rate;
    clear();
}

void ToneLock::clear()
{
    mLast = -1.0;
    mPeriod = 0;
    mFitting = 0;
    mOthers = 0;
    mFrequency = 0.0f;
    mLocked = false;
}

bool ToneLock::process(const COMPLEX *buffer, int length, int tone)
{
    const double shortest = mSampleRate / kHighestToneHz;
    for (int n = 0; n < length; ++n) {
        const double x = buffer[n].im;
        const bool isFalling = mLast >= 0.0 && x < 0.0;
        mLast = x;
        ++mPeriod;
        if (isFalling && mPeriod >= shortest) {
            mFrequency += float(kNewWeight * (mSampleRate / mPeriod - double(mFrequency)));
            judge(SqlCtcss::getIndexFreq(mFrequency) == tone, mPeriod);
            mPeriod = 0;
        } else if (mPeriod > mSampleRate * kLoseSeconds) {
            judge(false, mPeriod); // nothing swings at all
            mPeriod = 0;
        }
    }
    return mLocked;
}

void ToneLock::judge(bool isTone, int samples)
{
    mFitting = isTone ? mFitting + samples : 0;
    mOthers = isTone ? 0 : mOthers + samples;
    if (mFitting > mSampleRate * kFindSeconds)
        mLocked = true;
    else if (mOthers > mSampleRate * kLoseSeconds)
        mLocked = false;
    // Of a signal that goes on for days.
    mFitting = std::min(mFitting, int(mSampleRate));
    mOthers = std::min(mOthers, int(mSampleRate));
}
} // namespace DspCore
