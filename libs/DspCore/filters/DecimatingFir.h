// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/AlignedVector.h"
#include "DspCore/fft/FFT64.h"
#include "DspCore/types.h"

#include <vector>

namespace DspCore
{
/// Band limit and decimation in one: FastFir with edges -edge..edge followed by Resampler, as one
/// FIR filter with the convolution of both impulse responses, computed only where an output is
/// wanted (Crochiere/Rabiner, Multirate Digital Signal Processing).
///
///   input    . . . . . . . . . . . . . . . . . . . . . . . .
///            |<--- taps + 7 samples --->|                        one output each `down` / `up`
///                            |<--- taps + 7 samples --->|        samples, a sum over its window
///
/// At 3.072 MHz one sample in 64 goes on to the receiver: the two blocks filter all of them, this
/// one spends 507 products of a real tap on each that goes on. Outputs with the same place between
/// two inputs have the same taps; `up` such sets are kept, and outputs of one set are summed side
/// by side.
///
/// At a low decimation the window's products are more than a transform costs: of a block of 512
/// samples that begins with an output, together with the 512 before it, the spectrum is multiplied
/// by the filter's and folded, bins that fall onto each other after the decimation summed, and a
/// transform `down` times shorter gives the outputs.
///
/// Length and timing of the output are Resampler's, its values too but for the rounding of single
/// precision, which this block does without. Not thread-safe.
class DecimatingFir
{
public:
    /// Whether this way is the faster one, and its tables small.
    static bool pays(int up, int down);

    /// Designs the filter, edge in cycles per input sample, and starts with an empty history at
    /// phase 0. Allocates.
    void init(double edge, int taps, int up, int down);

    /// Where a block of up to SIGNAL_MAX_SIZE samples is to be put for process(), null before
    /// init().
    COMPLEX *room(int length);

    /// Converts the block that stands in room(length). Any cut of a stream gives the same output.
    /// Allocates nothing.
    void process(int length, COMPLEX *out, int &outLength);

    /// The same for a block that stands elsewhere.
    void process(const COMPLEX *in, int length, COMPLEX *out, int &outLength);

    /// Zeroes the history; the place in the stream stays.
    void clear();

private:
    static constexpr int kBlock = 512; // that is worth a transform, with as much history

    static bool isTransformed(int up, int down);
    void setUpTransform();
    void transformBlock(const COMPLEX *newest, COMPLEX *out);

    using Taps = AlignedVector<double>; // oldest sample's first, each twice: for both parts

    int mUp = 0;
    int mDown = 0;
    int mPhase = 0;   // steps from the next input to the next output; one input is `up` steps
    int mWindow = 0;  // samples that an output sees
    int mHistory = 0; // samples kept in front of a block
    std::vector<Taps> mTaps;
    AlignedVector<COMPLEX> mLine; // inputs, the oldest first
    int mEnd = 0;                 // of the inputs
    bool mTransforms = false;
    AlignedVector<COMPLEX> mSpectrum; // of the filter
    AlignedVector<COMPLEX> mWork;
    AlignedVector<COMPLEX> mFolded;
    FFT64 mForward;
    FFT64 mInverse;
};
} // namespace DspCore
