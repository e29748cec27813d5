// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "signal_primitives/ipps.h"

namespace signal_primitives
{
/// Multiplies blocks of a stream by a complex tone: ippsTone_Direct_64fc with magnitude 1 followed
/// by ippsMul_64fc_I, in one pass and without an array for the tone.
///
///   table     w[0] .. w[63] = exp(j 2 pi f n), kept as long as the frequency stays
///   block     |  64 samples  |  64 samples  | ..      times w times
///              z              z s            ..       z = exp(j phase), s = exp(j 2 pi f 64)
///
/// z comes from the exact phase every 1024 samples, so the rounding of 16 steps adds up, some
/// 1e-15. Not thread-safe.
class ToneMixer
{
public:
    /// The two arrays may be one. Frequency 0..1 in cycles per sample; the phase in radians, 0..2
    /// pi, runs on from block to block as that of ippsTone_Direct_64fc does. The statuses are those
    /// of the two functions.
    IppStatus mix(
        const Ipp64fc *block, Ipp64fc *mixed, int length, double frequency, double *phase);

    /// Turns the phase as a block would.
    static IppStatus skip(int length, double frequency, double *phase);

private:
    static constexpr int kTable = 64;

    void setFrequency(double frequency);

    double mFrequency = -1.0; // of the table; none yet
    Ipp64fc mStep{};          // over the length of the table
    alignas(64) double mRe[kTable];
    alignas(64) double mIm[kTable];
};
} // namespace signal_primitives
