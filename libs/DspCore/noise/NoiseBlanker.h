// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <array>
#include <cstddef>

namespace DspCore
{
/// Two blankers for impulses on the IQ stream, against one running mean of the power.
///
/// NB1 mutes seven samples around a sample that stands out; its signal is two samples late, so that
/// the mute begins two samples ahead of the peak. NB2 replaces single samples that stand out by a
/// short mean and adds no delay. Not thread-safe; the owner serialises.
class NoiseBlanker
{
public:
    /// Empties the history; thresholds and switches stay.
    void clear();

    void setEnableNb1(bool enable) { mEnableNb1 = enable; }
    void setEnableNb2(bool enable) { mEnableNb2 = enable; }

    /// Ratio of amplitudes; kept squared. The values before the first call are taken as they stand.
    void setThresholdNb1(double threshold) { mThresholdNb1 = threshold * threshold; }
    void setThresholdNb2(double threshold) { mThresholdNb2 = threshold * threshold; }

    /// In place, any length; nothing for a null buffer or a length below 1. Allocates nothing.
    void process(COMPLEX *buffer, int length);

private:
    void blank(COMPLEX *buffer, int length);
    void replace(COMPLEX *buffer, int length);

    static constexpr std::size_t kRingSize = 8;

    double mThresholdNb1 = 2.65; // ratio of powers
    double mThresholdNb2 = 2.48;
    double mPowerAverage = 1.0;
    COMPLEX mMean{0.0, 0.0};
    std::array<COMPLEX, kRingSize> mRing{};
    std::size_t mRead = 2; // both run downwards: reading follows writing by two samples
    std::size_t mWrite = 0;
    int mHang = 0;
    bool mEnableNb1 = false;
    bool mEnableNb2 = false;
};
} // namespace DspCore
