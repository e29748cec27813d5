// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/AlignedVector.h"
#include "DspCore/fft/FFT64.h"
#include "DspCore/types.h"

namespace DspCore
{
/// Convolution of a running stream with one complex filter of which only every `down`-th output is
/// wanted, frame by frame and without added delay.
///
///   frame t-1     frame t          the filter in partitions of a frame, its spectra H[k]
///   |-------------|-------------|
///            transform
///      X[t]  1024 bins             sum of  X[t] H[0] + X[t-1] H[1] + ...
///                                  |  0  |  1  |  2  | .. | d-1 |
///                                  '-----'-----'--+--'----'-----'
///                                                 |  folded: bins that lie 1024 / d apart fall
///                                                 v  onto each other as one sample in d is kept
///                                              |     |  1024 / d bins, transformed back: the last
///                                                       half are the outputs of frame t
///
/// What is not wanted is never computed: the transform back is d times shorter than that of
/// FilterStage, which this is with a fold (Crochiere/Rabiner, Multirate Digital Signal Processing).
/// Not thread-safe.
class FoldingConvolver
{
public:
    static constexpr int kFrame = 512; // samples

    /// Whether a frame has a whole number of outputs, at the same places as every frame.
    static bool canDecimate(int down) { return down >= 1 && kFrame % down == 0; }

    /// Frames in front of the present one that an output may depend on.
    static int historyFrames(int taps) { return (taps + kFrame - 1) / kFrame; }

    /// Takes the filter and empties the history. Allocates.
    void setTaps(const COMPLEX *taps, int count, int down);

    /// Takes a frame on a cache line, with the frame before it in front of it, as part of the
    /// history only.
    void take(const COMPLEX *frame);

    /// The same, and gives kFrame / down outputs, the first one of the frame's first sample.
    void process(const COMPLEX *frame, COMPLEX *out);

private:
    static constexpr int kBins = 2 * kFrame;

    int mFolded = kBins; // bins after the fold
    int mPartitions = 0;
    int mNewest = 0; // spectrum of the last frame; older ones follow it, round the end
    AlignedVector<double> mFilter;
    AlignedVector<double> mHistory;
    AlignedVector<COMPLEX> mWork = AlignedVector<COMPLEX>(kBins);
    AlignedVector<COMPLEX> mOutputs = AlignedVector<COMPLEX>(kBins);
    FFT64 mForward;
    FFT64 mInverse;
};
} // namespace DspCore
