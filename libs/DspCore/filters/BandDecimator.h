// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/DecimatingFir.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/Resampler.h"

#include <vector>

namespace DspCore
{
/// Limits the band of a stream and brings it to another rate: FastFir followed by Resampler, or
/// DecimatingFir in place of both where that is faster. Not thread-safe.
class BandDecimator
{
public:
    /// Passes -edge..edge, in cycles per input sample, and changes the rate by up / down. Starts
    /// with an empty history at phase 0. Allocates.
    void init(double edge, int taps, int up, int down);

    /// Where a block of up to SIGNAL_MAX_SIZE samples is to be put for process().
    COMPLEX *room(int length) { return mAtOnce ? mBoth.room(length) : mInput.data(); }

    /// Converts the block that stands in room() of its length or more; the output is at most
    /// SIGNAL_MAX_SIZE samples. Any cut of a stream gives the same output. Allocates nothing.
    void process(int length, COMPLEX *out, int &outLength);

    /// The same for a block that stands elsewhere.
    void process(const COMPLEX *in, int length, COMPLEX *out, int &outLength);

    /// Empties the history; the place in the stream stays.
    void clear();

private:
    bool mAtOnce = false;
    DecimatingFir mBoth;
    FastFir mLimit;
    Resampler mResampler;
    std::vector<COMPLEX> mInput = std::vector<COMPLEX>(SIGNAL_MAX_SIZE);
};
} // namespace DspCore
