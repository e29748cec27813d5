// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/ConvolutionKernels.h"
#include "DspCore/filters/FilterStage.h"

namespace DspCore
{
/// Convolution of a running stream with one complex filter, without added delay, for blocks of any
/// length (Gardner, Efficient convolution without input-output delay, 1995).
///
///   taps  0      32                 256                                         1570
///         |direct| 32 | 32 |.. | 32 |      256      |      256      |  ..  | 256 |
///          sum    short stage        long stage
///
/// A block of a few samples needs the newest of them at once: the first taps are a plain sum. The
/// taps after them meet samples that are a short frame old at least, so their part of a frame's
/// outputs is found before the frame begins, by transforms of two frames; the taps after 256 (512
/// in a long filter) likewise by long frames, which cost less per tap. A block that is a whole
/// frame of the short stage needs no plain sum: the transform of the frame itself does its part.
///
/// The short frame is as long as the first block after setTaps() or clear(), within 32 to 512:
/// blocks come in one length as long as the rate stays. Other lengths after that give the same
/// output at more cost. Where the short frame is long enough for the filter it is the only stage.
///
/// Two channels at 48 kHz with 1570 taps cost 0.1 to 0.2 % of a core; a long frame's transforms
/// fall on one call, for some 10 us with the longest filter. Not thread-safe.
template <typename Sample>
class PartitionedConvolver
{
public:
    using Real = typename Primitives<Sample>::Real;

    /// Takes the filter and empties the history. Allocates.
    void setTaps(const Sample *taps, int count);

    /// Convolves in place. Allocates nothing.
    void process(Sample *buffer, int length);

    /// Empties the history; the filter stays.
    void clear();

    /// Whether no sample has come since setTaps() or clear().
    bool isEmpty() const { return mEmpty; }

    int taps() const { return int(mTaps.size()); }

    const AlignedVector<Sample> &response() const { return mTaps; }

private:
    void layOut(int blockLength);
    void processPiece(Sample *samples, int count);
    void filterBegunFrame(Sample *samples, int count);
    void addLong(Sample *samples, int count);
    void layOutParts(const Sample *samples, int count, int at);

    AlignedVector<Sample> mTaps;
    AlignedVector<Real> mTapsRe; // again, for the plain sum
    AlignedVector<Real> mTapsIm;
    bool mEmpty = true;
    int mShortSize = 0; // of the layout at hand; 0: none yet
    bool mHasLong = false;
    FilterStage<Sample> mShort;
    FilterStage<Sample> mLong;
    const Sample *mShortSums = nullptr; // what earlier frames give to the present one
    const Sample *mLongSums = nullptr;
    // The short frame before the present one and the present one, for the plain sum.
    AlignedVector<Real> mFrameRe = AlignedVector<Real>(kFrameRoom);
    AlignedVector<Real> mFrameIm = AlignedVector<Real>(kFrameRoom);
    AlignedVector<Sample> mInput = AlignedVector<Sample>(FilterStage<Sample>::kLargest);

    static constexpr int kFrameRoom = 2 * FilterStage<Sample>::kLargest + kDirectOverrun;
};

extern template class PartitionedConvolver<COMPLEX>;
extern template class PartitionedConvolver<COMPLEX32>;
} // namespace DspCore
