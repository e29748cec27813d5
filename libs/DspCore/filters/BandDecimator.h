// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/DecimatingFir.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/Resampler.h"

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

    /// Converts a block; input and output are at most SIGNAL_MAX_SIZE samples. The input is
    /// overwritten. Any cut of a stream gives the same output. Allocates nothing.
    void process(COMPLEX *in, int length, COMPLEX *out, int &outLength);

    /// Empties the history; the place in the stream stays.
    void clear();

private:
    bool mAtOnce = false;
    DecimatingFir mBoth;
    FastFir mLimit;
    Resampler mResampler;
};
} // namespace DspCore
