// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/FastFir.h"
#include "DspCore/types.h"

#include <vector>

namespace DspCore
{
/// Spreads CW signals between the ears by pitch: what lies below the tone goes to one ear, what
/// lies above it, up to twice the tone, to the other.
///
/// Not thread-safe; the owner serialises setters and process().
class Dse
{
public:
    Dse();

    void setEnable(bool enable) { mEnable = enable; }
    bool enable() const { return mEnable; }

    /// Empties both filters; the settings stay.
    void clear();

    /// Length of both filters in taps.
    void setTaps(int taps);

    /// The tone that parts the ears, hertz.
    void setPitch(double pitch);

    /// False: below the tone is left (the real part).
    void setSwap(bool swap) { mSwap = swap; }

    /// Hertz; also empties both filters.
    void setSampleRate(double rate);
    double sampleRate() const { return mSampleRate; }

    /// In place, length 1..SIGNAL_MAX_SIZE. A null buffer or a length below 1 is reported and left
    /// alone. Does nothing when not enabled. Allocates nothing.
    void process(COMPLEX *buffer, int length);

private:
    void design();

    bool mEnable = false;
    double mSampleRate = 48000.0;
    double mPitch = 700.0;
    int mTaps = 200;
    bool mSwap = false;
    FastFir mBelow;
    FastFir mAbove;
    std::vector<COMPLEX> mBelowBlock = std::vector<COMPLEX>(SIGNAL_MAX_SIZE);
    std::vector<COMPLEX> mAboveBlock = std::vector<COMPLEX>(SIGNAL_MAX_SIZE);
};
} // namespace DspCore
