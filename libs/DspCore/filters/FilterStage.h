// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/AlignedVector.h"
#include "DspCore/fft/FFT64.h"

#include <type_traits>
#include <vector>

namespace DspCore
{
/// One floor of PartitionedConvolver: a filter in partitions of equal size, convolved with frames
/// of the same size in the frequency domain by overlap-save (Stockham, High-speed convolution and
/// correlation, 1966; frequency-domain delay line: Armelloni et al., 2003).
///
///   frame t-2   frame t-1   frame t          each with the frame before it transformed to
///       |           |          |             X[t-2], X[t-1], X[t]; partition k of the filter to
///       H[k]
///       '--- H[2]   '- H[1]    '- H[0]
///                                            outputs of frame t = last half of the inverse
///                                            transform of  X[t] H[0] + X[t-1] H[1] + X[t-2] H[2]
///
/// All but the first product are known before frame t begins. So a frame that comes piece by piece
/// gets those from earlier() and its owner does the first partition by other means; a frame that
/// comes in one piece gets all of them from filterFrame(). Either way a frame costs one transform
/// there and one back.
///
/// Frames are 32 to 512 samples, a power of two. Not thread-safe.
template <typename Sample>
class FilterStage
{
public:
    using Real = typename Primitives<Sample>::Real;

    static constexpr int kSmallest = 32;
    static constexpr int kLargest = 512;

    FilterStage();

    /// Takes memory for filters of up to `taps` taps.
    void reserve(int taps);

    /// Takes the filter's taps 0..count-1 for frames of `size`; allocates nothing if count was
    /// reserved. Empties the history.
    void setUp(int size, const Sample *taps, int count);

    /// Empties the history; the next sample is the first of a frame.
    void clear();

    int size() const { return mSize; }

    /// Samples of the present frame that have come; 0 after its last one.
    int position() const { return mPosition; }

    /// The last complete frame; zeros before the first.
    const Sample *lastFrame() const { return mFrame.data(); }

    /// What earlier frames give to all outputs of the present one by the partitions from 1 on:
    /// size() samples. To be asked for at position 0; stands until the frame is complete.
    const Sample *earlier();

    /// Takes the next samples, not beyond the end of the frame.
    void take(const Sample *samples, int count);

    /// At position 0: filters a whole frame in place, by all partitions.
    void filterFrame(Sample *frame);

private:
    using Fft = std::conditional_t<std::is_same_v<Sample, COMPLEX>, FFT64, FFT32>;

    Fft &fft();
    void completeFrame();
    const Sample *sum(int firstPartition, int newest);

    int mSize = 0;
    int mPartitions = 0;
    int mPosition = 0;
    int mNewest = 0; // spectrum of the last complete frame; older ones follow it, round the end
    AlignedVector<Real> mFilter;  // spectra of the partitions
    AlignedVector<Real> mHistory; // spectra of the frames
    AlignedVector<Sample> mFrame; // the frame before, the present frame
    AlignedVector<Sample> mWork;
    AlignedVector<Sample> mSums; // of the last inverse transform
    std::vector<Fft> mFfts;      // by size, from 2 * kSmallest up
};

extern template class FilterStage<COMPLEX>;
extern template class FilterStage<COMPLEX32>;
} // namespace DspCore
