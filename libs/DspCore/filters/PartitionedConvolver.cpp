// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/PartitionedConvolver.h"

#include <algorithm>
#include <bit>

namespace DspCore
{
namespace
{
// Measured: a stage of its own for the taps beyond pays from this many partitions on.
constexpr int kMostShortPartitions = 16;
constexpr int kLongSize = 256;
constexpr int kLongestSize = 512;
constexpr int kTapsForLongest = 2048;
} // namespace

template <typename Sample>
void PartitionedConvolver<Sample>::setTaps(const Sample *taps, int count)
{
    mTaps.assign(taps, taps + count);
    mTapsRe.resize(std::size_t(count));
    mTapsIm.resize(std::size_t(count));
    for (std::size_t i = 0; i < mTaps.size(); ++i) {
        mTapsRe[i] = taps[i].re;
        mTapsIm[i] = taps[i].im;
    }
    mShort.reserve(count);
    mLong.reserve(count);
    mShortSize = 0;
    clear();
}

template <typename Sample>
void PartitionedConvolver<Sample>::clear()
{
    mEmpty = true;
    if (mShortSize == 0)
        return;
    mShort.clear();
    if (mHasLong)
        mLong.clear();
}

template <typename Sample>
void PartitionedConvolver<Sample>::layOut(int blockLength)
{
    const int size = std::clamp(int(std::bit_floor(unsigned(blockLength))),
        FilterStage<Sample>::kSmallest, FilterStage<Sample>::kLargest);
    if (size == mShortSize)
        return;
    const int longSize = taps() > kTapsForLongest ? kLongestSize : kLongSize;
    mShortSize = size;
    mHasLong = size < longSize && taps() > kMostShortPartitions * size;
    mShort.setUp(size, mTaps.data(), mHasLong ? longSize : taps());
    if (mHasLong)
        mLong.setUp(longSize, mTaps.data(), taps());
}

template <typename Sample>
void PartitionedConvolver<Sample>::process(Sample *buffer, int length)
{
    if (mEmpty && length > 0) {
        layOut(length);
        mEmpty = false;
    }
    while (length > 0) {
        const int count = std::min(length, mShort.size() - mShort.position());
        processPiece(buffer, count);
        buffer += count;
        length -= count;
    }
}

/// A piece lies within one frame of either stage.
template <typename Sample>
void PartitionedConvolver<Sample>::processPiece(Sample *samples, int count)
{
    const bool isWhole = count == mShort.size();
    if (mHasLong || !isWhole)
        std::copy_n(samples, count, mInput.begin()); // the outputs take its place
    if (isWhole)
        mShort.filterFrame(samples);
    else
        filterBegunFrame(samples, count);
    if (mHasLong)
        addLong(samples, count);
}

/// Lays samples of the short frame before, and of the present one after it, out for the plain sum.
template <typename Sample>
void PartitionedConvolver<Sample>::layOutParts(const Sample *samples, int count, int at)
{
    for (int i = 0; i < count; ++i) {
        mFrameRe[std::size_t(at + i)] = samples[i].re;
        mFrameIm[std::size_t(at + i)] = samples[i].im;
    }
}

template <typename Sample>
void PartitionedConvolver<Sample>::filterBegunFrame(Sample *samples, int count)
{
    const int position = mShort.position();
    if (position == 0) {
        mShortSums = mShort.earlier();
        layOutParts(mShort.lastFrame(), mShort.size(), 0);
    }
    std::copy_n(mShortSums + position, count, samples);
    const int at = mShort.size() + position;
    layOutParts(mInput.data(), count, at);
    directFir({mFrameRe.data() + at, mFrameIm.data() + at}, count, {mTapsRe.data(), mTapsIm.data()},
        std::min(mShort.size(), taps()), samples);
    mShort.take(mInput.data(), count);
}

template <typename Sample>
void PartitionedConvolver<Sample>::addLong(Sample *samples, int count)
{
    const int position = mLong.position();
    if (position == 0)
        mLongSums = mLong.earlier();
    for (int i = 0; i < count; ++i) {
        samples[i].re += mLongSums[position + i].re;
        samples[i].im += mLongSums[position + i].im;
    }
    mLong.take(mInput.data(), count);
}

template class PartitionedConvolver<COMPLEX>;
template class PartitionedConvolver<COMPLEX32>;
} // namespace DspCore
