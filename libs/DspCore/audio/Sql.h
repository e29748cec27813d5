// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"
#include "signal_primitives/ipps.h"

namespace DspCore
{
/// Level squelch: silence while the channel's level is below a threshold.
///
/// Not thread-safe; the owner serialises.
class Sql
{
public:
    void setEnable(bool enable) { mEnable = enable; }

    /// On the scale of the level given to process(), dBm.
    void setThreshold(double threshold) { mThreshold = threshold; }

    /// Zeroes the block when enabled and the threshold is more than 3 dB above the level.
    void process(COMPLEX *buffer, int length, double level)
    {
        if (mEnable && mThreshold > level + 3.0)
            ippsZero_64fc(buffer, length);
    }

private:
    bool mEnable = false;
    double mThreshold = 0.01;
};
} // namespace DspCore
