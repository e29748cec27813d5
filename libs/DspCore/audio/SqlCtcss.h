// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/audio/ToneLock.h"
#include "DspCore/filters/Biquad.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/types.h"

#include <vector>

namespace DspCore
{
/// Squelch of the narrow-FM channel by level and by sub-audible tone.
///
/// The tone is looked for in a copy of the audio after a 4 Hz wide filter: the periods between
/// falling zero crossings give a smoothed frequency, and every period that fits the wanted tone
/// counts for the whole block it lies in. The audio itself loses everything below 350 Hz while the
/// tone squelch is on. Not thread-safe; the owner serialises.
class SqlCtcss
{
public:
    SqlCtcss();

    /// The tone is looked for by a ToneLock, on samples and time that all count, and the filter
    /// moves with the tone at once.
    void setExact(bool exact);

    /// Empties filters, counters, smoothed frequency and lock; the settings stay.
    void clear();

    /// Level squelch and tone squelch.
    void setEnableSql(bool enable) { mEnableSql = enable; }
    void setEnable(bool enable) { mEnable = enable; }

    /// Index into Velmora::CTCSS, 0..41, unchecked; the filter takes the nearest one. Comparison
    /// follows at once; the filter moves at the next setSampleRate(), unless exact.
    void setTone(int index);

    /// On the scale of the level given to process(), dBm.
    void setThreshold(double threshold) { mThreshold = threshold; }

    /// Hertz.
    void setSampleRate(double rate);

    /// In place, length 1..SIGNAL_MAX_SIZE; level of the channel in dBm. Allocates nothing.
    void process(COMPLEX *buffer, int length, double level);

    /// Attenuates the block by 160 dB.
    void doSqualch(COMPLEX *buffer, int length);

    /// Follows the lock with what a filtered block holds; true while locked.
    bool findCTCSS(const COMPLEX *buffer, int length);

    /// Tone indices of the periods that end in a filtered block, -1 for one that fits no tone.
    /// Valid until the next call.
    const std::vector<int> &findCTCSS_ID(const COMPLEX *buffer, int length);

    /// First tone within 1.8 Hz of a frequency, or -1.
    static int getIndexFreq(float frequency);

private:
    bool hearsTone(bool strong, int length);
    void design();
    void designToneFilter();

    bool mExact = false;
    bool mEnable = false;
    bool mEnableSql = false;
    int mTone = 0;
    double mThreshold = 3.1622776601683795e-05;
    double mSampleRate = 48000.0;
    Biquad mHighPass;
    FastFir mToneFilter;
    std::vector<COMPLEX> mCopy = std::vector<COMPLEX>(SIGNAL_MAX_SIZE);
    std::vector<int> mIds;
    int mPeriod = 0; // samples since the last accepted crossing
    int mLoss = 0;   // samples
    int mGain = 0;   // samples
    bool mLocked = false;
    ToneLock mToneLock;
    float mFrequency = 0.0f; // hertz, smoothed over periods
};
} // namespace DspCore
