// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/FilterStage.h"

#include "DspCore/filters/ConvolutionKernels.h"

#include <algorithm>
#include <bit>

namespace DspCore
{
namespace
{
int partitionsFor(int taps, int size)
{
    return (taps + size - 1) / size;
}
} // namespace

template <typename Sample>
FilterStage<Sample>::FilterStage() : mFrame(2 * kLargest), mWork(2 * kLargest), mSums(2 * kLargest)
{
    for (int size = kSmallest; size <= kLargest; size *= 2)
        mFfts.emplace_back().init(2 * size);
}

template <typename Sample>
void FilterStage<Sample>::reserve(int taps)
{
    // A spectrum has two bins for each sample of a frame, a bin two numbers.
    const auto numbers = std::size_t(4 * (taps + kLargest));
    if (mFilter.size() >= numbers)
        return;
    mFilter.resize(numbers);
    mHistory.resize(numbers);
}

template <typename Sample>
auto FilterStage<Sample>::fft() -> Fft &
{
    return mFfts[std::size_t(std::countr_zero(unsigned(mSize / kSmallest)))];
}

template <typename Sample>
void FilterStage<Sample>::setUp(int size, const Sample *taps, int count)
{
    mSize = size;
    mPartitions = partitionsFor(count, size);
    const int bins = 2 * size;
    // The transforms do not divide by the number of bins, the filter does.
    const Real scale = Real(1) / Real(bins);
    for (int k = 0; k < mPartitions; ++k) {
        const int first = k * size;
        const int length = std::min(size, count - first);
        std::fill_n(mWork.begin(), bins, Sample{});
        for (int i = 0; i < length; ++i)
            mWork[std::size_t(i)] = {taps[first + i].re * scale, taps[first + i].im * scale};
        fft().direct(mWork.data(), mSums.data());
        storeSpectrum(mSums.data(), bins, mFilter.data(), k, mPartitions);
    }
    clear();
}

template <typename Sample>
void FilterStage<Sample>::clear()
{
    std::fill_n(mHistory.begin(), 4 * mSize * mPartitions, Real(0));
    std::fill(mFrame.begin(), mFrame.end(), Sample{});
    mPosition = 0;
    mNewest = 0;
}

template <typename Sample>
const Sample *FilterStage<Sample>::sum(int firstPartition, int newest)
{
    if (firstPartition == mPartitions) {
        std::fill_n(mSums.begin() + mSize, mSize, Sample{});
    } else {
        sumProducts({mHistory.data(), mPartitions}, newest, {mFilter.data(), mPartitions},
            firstPartition, 2 * mSize, mWork.data());
        fft().invers(mWork.data(), mSums.data());
    }
    return mSums.data() + mSize;
}

template <typename Sample>
const Sample *FilterStage<Sample>::earlier()
{
    return sum(1, mNewest);
}

template <typename Sample>
void FilterStage<Sample>::take(const Sample *samples, int count)
{
    std::copy_n(samples, count, mFrame.begin() + mSize + mPosition);
    mPosition += count;
    if (mPosition == mSize)
        completeFrame();
}

template <typename Sample>
void FilterStage<Sample>::filterFrame(Sample *frame)
{
    take(frame, mSize);
    std::copy_n(sum(0, mNewest), mSize, frame);
}

template <typename Sample>
void FilterStage<Sample>::completeFrame()
{
    fft().direct(mFrame.data(), mWork.data());
    std::copy_n(mFrame.begin() + mSize, mSize, mFrame.begin());
    mNewest = (mNewest == 0 ? mPartitions : mNewest) - 1;
    storeSpectrum(mWork.data(), 2 * mSize, mHistory.data(), mNewest, mPartitions);
    mPosition = 0;
}

template class FilterStage<COMPLEX>;
template class FilterStage<COMPLEX32>;
} // namespace DspCore
