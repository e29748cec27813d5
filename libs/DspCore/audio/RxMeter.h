// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

namespace DspCore
{
/// Levels of a block: of the real and the imaginary part apart, in dB of full scale, and of the
/// whole, smoothed over blocks, in dBm.
///
/// A silent block reads minus infinity, and the smoothed level then stays there, as the arithmetic
/// gives, unless it restarts. How long the smoothing takes depends on how long the blocks are,
/// unless it goes by time. Not thread-safe; the owner serialises.
class RxMeter
{
public:
    /// A smoothed level that is not finite begins anew, as ahead of the first block.
    void setRestart(bool restart) { mRestarts = restart; }

    /// Smooths what has come in 512 samples of 48 kHz, which is a block there, whatever the blocks
    /// and the rate.
    void setByTime(bool byTime) { mByTime = byTime; }

    /// Any length; nothing for a null buffer or a length below 1. The block is only read. The rate,
    /// in hertz, counts for smoothing by time. Allocates nothing.
    void process(const COMPLEX *buffer, int length, double rate = kPaceRate);

    /// Mean power of one part over the last block, 10 log10, dB.
    double adcRe() const;
    double adcIm() const;

    /// Mean power less 10 dB, smoothed by 0.95 and 0.05 per block or its time.
    double dbm() const { return mDbm; }

private:
    static constexpr double kFirstDbm = -120.0;
    static constexpr double kPaceRate = 48000.0; // Hz

    void smoothByTime(double sum, int length, double rate);
    static double levelDbm(double meanPower);

    // Of the two parts: at eight samples a block, logarithms that nobody reads cost as much as the
    // sums. -120 dB before the first block.
    COMPLEX mPower{1e-12, 1e-12};
    double mDbm = kFirstDbm;
    bool mRestarts = false;
    bool mByTime = false;
    double mSum = 0.0; // of squares, not in mDbm yet
    int mSamples = 0;  // likewise
};
} // namespace DspCore
