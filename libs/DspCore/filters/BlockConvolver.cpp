// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/BlockConvolver.h"

#include <algorithm>
#include <cmath>

namespace DspCore
{
namespace
{
template <typename Sample>
void add(const Sample *source, Sample *sum, int count)
{
    for (int i = 0; i < count; ++i)
        sum[i] = {sum[i].re + source[i].re, sum[i].im + source[i].im};
}
} // namespace

template <typename Sample>
BlockConvolver<Sample>::BlockConvolver()
    : mSpectrum(kMaxFftSize), mTail(kMaxFftSize), mWork(kMaxFftSize)
{ }

template <typename Sample>
void BlockConvolver<Sample>::setFilter(const Sample *taps, int count, int fftSize)
{
    keepTail();
    mFftSize = fftSize;
    mFft.init(fftSize);
    std::fill_n(
        std::copy_n(taps, count, mSpectrum.begin()), std::max(0, fftSize - count), Sample{});
    mFft.process(mSpectrum.data(), mFftSize, FftType::Forward);

    Real *const parts = reinterpret_cast<Real *>(mSpectrum.data());
    Real largest = 0;
    Primitives<Sample>::largest(parts, 2 * mFftSize, &largest);
    Primitives<Sample>::scaleReals(Real(1) / largest, parts, 2 * mFftSize);

    // The forward transform divides by the FFT size, and so does the largest part of its result.
    const Real scale = Real(1) / largest / Real(mFftSize);
    bool isFinite = true;
    for (int i = 0; i < count; ++i) {
        const Sample tap = {taps[i].re * scale, taps[i].im * scale};
        isFinite = isFinite && std::isfinite(tap.re) && std::isfinite(tap.im);
        mWork[std::size_t(i)] = tap;
    }
    mInPartitions =
        mForm == ConvolutionForm::Chosen && isFinite && count + kMaxBlock - 1 <= mFftSize;
    if (mInPartitions)
        mConvolver.setTaps(mWork.data(), count);
}

/// Moves the tail to its start and adds what the filter at hand would still give over zeros.
template <typename Sample>
void BlockConvolver<Sample>::keepTail()
{
    const auto start = mTail.begin() + mTailStart;
    const auto end = mTail.begin() + mFftSize;
    std::fill(std::move(start, end, mTail.begin()), end, Sample{});
    mTailStart = 0;
    if (!mInPartitions || mConvolver.isEmpty())
        return;
    const int length = mConvolver.taps() - 1;
    std::fill_n(mWork.begin(), length, Sample{});
    mConvolver.process(mWork.data(), length);
    add(mWork.data(), mTail.data(), length);
}

template <typename Sample>
void BlockConvolver<Sample>::clear()
{
    std::fill(mTail.begin(), mTail.end(), Sample{});
    mTailStart = mInPartitions ? mFftSize : 0;
    if (mInPartitions)
        mConvolver.clear();
}

template <typename Sample>
std::span<const Sample> BlockConvolver<Sample>::taps() const
{
    if (!mInPartitions)
        return {};
    return mConvolver.response();
}

template <typename Sample>
IppStatus BlockConvolver<Sample>::process(Sample *buffer, int length)
{
    if (length < 1 || length > kMaxBlock)
        return ippStsSizeErr;
    if (!mInPartitions)
        return overlapAdd(buffer, length);
    mConvolver.process(buffer, length);
    addTail(buffer, length);
    return ippStsNoErr;
}

template <typename Sample>
void BlockConvolver<Sample>::addTail(Sample *buffer, int length)
{
    const int count = std::min(length, mFftSize - mTailStart);
    add(mTail.data() + mTailStart, buffer, count);
    mTailStart += count;
}

template <typename Sample>
IppStatus BlockConvolver<Sample>::overlapAdd(Sample *buffer, int length)
{
    std::copy_n(buffer, length, mWork.begin());
    if (length < mFftSize)
        std::fill(mWork.begin() + length, mWork.begin() + mFftSize, Sample{});
    if (!mFft.process(mWork.data(), mFftSize, FftType::Forward))
        return mFft.status();
    const IppStatus status = Primitives<Sample>::multiply(mSpectrum.data(), mWork.data(), mFftSize);
    if (status != ippStsNoErr)
        return status;
    if (!mFft.process(mWork.data(), mFftSize, FftType::Inverse))
        return mFft.status();
    if (length > mFftSize)
        return ippStsSizeErr;

    const Sample *const work = mWork.data();
    Sample *const tail = mTail.data();
    for (int i = 0; i < length; ++i)
        buffer[i] = {tail[i].re + work[i].re, tail[i].im + work[i].im};
        // Every element is read before a lower one is written.
#pragma GCC ivdep
    for (int i = length; i < mFftSize; ++i)
        tail[i - length] = {tail[i].re + work[i].re, tail[i].im + work[i].im};
    std::fill(tail + mFftSize - length, tail + mFftSize, Sample{});
    return ippStsNoErr;
}

template class BlockConvolver<COMPLEX>;
template class BlockConvolver<COMPLEX32>;
} // namespace DspCore
