// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

namespace DspCore
{
/// Levels of a block: of the real and the imaginary part apart, in dB of full scale, and of the
/// whole, smoothed over blocks, in dBm.
///
/// A silent block reads minus infinity, and the smoothed level then stays there, as the arithmetic
/// gives, unless it restarts. Not thread-safe; the owner serialises.
class RxMeter
{
public:
    /// A smoothed level that is not finite begins anew, as ahead of the first block.
    void setRestart(bool restart) { mRestarts = restart; }

    /// Any length; nothing for a null buffer or a length below 1. The block is only read. Allocates
    /// nothing.
    void process(const COMPLEX *buffer, int length);

    /// Mean power of one part over the last block, 10 log10, dB.
    double adcRe() const;
    double adcIm() const;

    /// Mean power less 10 dB, smoothed by 0.95 and 0.05 per block.
    double dbm() const { return mDbm; }

private:
    static constexpr double kFirstDbm = -120.0;

    // Of the two parts: at eight samples a block, logarithms that nobody reads cost as much as the
    // sums. -120 dB before the first block.
    COMPLEX mPower{1e-12, 1e-12};
    double mDbm = kFirstDbm;
    bool mRestarts = false;
};
} // namespace DspCore
