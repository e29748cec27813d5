// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/SqlCtcss.h"

#include "DspCore/audio/CtcssTones.h"
#include "signal_primitives/ipps.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace DspCore
{
namespace
{
constexpr double kMarginDb = 3.0;
constexpr double kMuteGain = 1e-08;
constexpr double kHighPassHz = 350.0;
constexpr double kHighPassQuality = 0.707;
constexpr double kToneHalfWidthHz = 2.0;
constexpr int kToneFilterTaps = 800;
constexpr double kHighestToneHz = 260.0; // shorter periods are noise
constexpr float kToneTolerance = 1.8f;   // Hz
constexpr double kNewWeight = 0.1f;      // the single-precision value
constexpr double kOldWeight = 0.9;

// Periods of a block of SIGNAL_MAX_SIZE samples at the lowest thinkable rates.
constexpr std::size_t kMostIds = SIGNAL_MAX_SIZE;
} // namespace

SqlCtcss::SqlCtcss()
{
    mIds.reserve(kMostIds);
    mHighPass.setEnable(true);
    design();
}

void SqlCtcss::design()
{
    mHighPass.init(Biquad::Type::HighPass, kHighPassHz / mSampleRate, kHighPassQuality, 0.0);
    designToneFilter();
}

void SqlCtcss::designToneFilter()
{
    const int last = static_cast<int>(Velmora::CTCSS.size()) - 1;
    const double tone = Velmora::CTCSS[static_cast<std::size_t>(std::clamp(mTone, 0, last))];
    mToneFilter.init((tone - kToneHalfWidthHz) / mSampleRate,
        (tone + kToneHalfWidthHz) / mSampleRate, kToneFilterTaps);
}

void SqlCtcss::setExact(bool exact)
{
    mExact = exact;
}

void SqlCtcss::setTone(int index)
{
    if (mExact && index != mTone) {
        mTone = index;
        mToneLock.clear();
        designToneFilter();
    }
    mTone = index;
}

void SqlCtcss::setSampleRate(double rate)
{
    mSampleRate = rate;
    mLoss = static_cast<int>(rate);
    mToneLock.setSampleRate(rate);
    design();
}

void SqlCtcss::clear()
{
    mHighPass.clear();
    mToneFilter.clear();
    mPeriod = 0;
    mLoss = 0;
    mGain = 0;
    mLocked = false;
    mFrequency = 0.0f;
    mToneLock.clear();
}

void SqlCtcss::process(COMPLEX *buffer, int length, double level)
{
    const bool strong = mThreshold <= level + kMarginDb;
    if (!mEnable) {
        if (mEnableSql && !strong)
            doSqualch(buffer, length);
        return;
    }
    assert(length <= SIGNAL_MAX_SIZE);
    ippsCopy_64fc(buffer, mCopy.data(), length);
    mHighPass.process(buffer, length);
    mToneFilter.process(mCopy.data(), length);
    if (!hearsTone(strong, length))
        doSqualch(buffer, length);
}

/// The exact search goes on in a weak signal, so that its time is that of the stream.
bool SqlCtcss::hearsTone(bool strong, int length)
{
    if (mExact)
        return mToneLock.process(mCopy.data(), length, mTone) && strong;
    return strong && findCTCSS(mCopy.data(), length);
}

void SqlCtcss::doSqualch(COMPLEX *buffer, int length)
{
    ippsMulC_64f_I(kMuteGain, &buffer->re, 2 * length);
}

const std::vector<int> &SqlCtcss::findCTCSS_ID(const COMPLEX *buffer, int length)
{
    mIds.clear();
    const int shortest = static_cast<int>(std::floor(mSampleRate / kHighestToneHz + 0.5));
    for (int k = 0; k + 1 < length; ++k) {
        const bool falling = buffer[k].im >= 0.0 && buffer[k + 1].im < 0.0;
        if (!falling || mPeriod < shortest) {
            // Digital silence has no crossings for as long as it lasts.
            mPeriod += mPeriod < std::numeric_limits<int>::max();
            continue;
        }
        const double frequency = mSampleRate / mPeriod;
        mFrequency = static_cast<float>(kOldWeight * mFrequency + kNewWeight * frequency);
        mPeriod = 0;
        mIds.push_back(getIndexFreq(mFrequency));
    }
    return mIds;
}

int SqlCtcss::getIndexFreq(float frequency)
{
    for (std::size_t i = 0; i < Velmora::CTCSS.size(); ++i) {
        const float tone = Velmora::CTCSS[i];
        if (frequency >= tone - kToneTolerance && frequency <= tone + kToneTolerance)
            return static_cast<int>(i);
    }
    return -1;
}

bool SqlCtcss::findCTCSS(const COMPLEX *buffer, int length)
{
    const std::vector<int> &ids = findCTCSS_ID(buffer, length);
    if (!mLocked) {
        for (const int id : ids)
            mGain = id == mTone ? mGain + length : 0;
        if (mGain > static_cast<int>(mSampleRate) / 10) {
            mLocked = true;
            mLoss = 0;
        }
    } else {
        for (const int id : ids)
            mLoss = id != mTone ? mLoss + length : 0;
        if (mLoss > static_cast<int>(mSampleRate / 6.0)) {
            mLocked = false;
            mGain = 0;
        }
    }
    return mLocked;
}
} // namespace DspCore
