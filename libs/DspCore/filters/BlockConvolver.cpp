// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/BlockConvolver.h"

#include "DspCore/filters/DirectConvolution.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace DspCore
{
namespace
{
// Products of the direct sum that take the time of one point and stage of the two transforms.
constexpr double kProductsPerStage = 2.0;

int directLimit(int fftSize, int taps)
{
    const double stages = fftSize * double(std::bit_width(unsigned(fftSize)) - 1);
    return int(kProductsPerStage * stages / taps);
}
} // namespace

template <typename Sample>
BlockConvolver<Sample>::BlockConvolver()
    : mSpectrum(kMaxFftSize), mTail(kMaxFftSize), mWork(kMaxFftSize),
      mDirectRe(kMaxTaps + 2 * kDirectPadding), mDirectIm(kMaxTaps + 2 * kDirectPadding)
{ }

template <typename Sample>
void BlockConvolver<Sample>::setFftSize(int size)
{
    if (size == mFftSize)
        return;
    mFftSize = size;
    mFft.init(size);
    mTailLength = size;
}

template <typename Sample>
void BlockConvolver<Sample>::setTaps(const Sample *taps, int count)
{
    std::fill(mSpectrum.begin(), mSpectrum.end(), Sample{});
    std::copy_n(taps, count, mSpectrum.begin());
    mFft.process(mSpectrum.data(), mFftSize, FftType::Forward);

    Real *const parts = reinterpret_cast<Real *>(mSpectrum.data());
    Real largest = 0;
    Primitives<Sample>::largest(parts, 2 * mFftSize, &largest);
    Primitives<Sample>::scaleReals(Real(1) / largest, parts, 2 * mFftSize);
    // The forward transform divides by the FFT size, and so does the largest part of its result.
    setDirectTaps(taps, count, Real(1) / largest / Real(mFftSize));
}

template <typename Sample>
void BlockConvolver<Sample>::setDirectTaps(const Sample *taps, int count, Real scale)
{
    std::fill(mDirectRe.begin(), mDirectRe.end(), Real(0));
    std::fill(mDirectIm.begin(), mDirectIm.end(), Real(0));
    mDirectTapsAreFinite = true;
    for (int i = 0; i < count; ++i) {
        const Real re = taps[i].re * scale;
        const Real im = taps[i].im * scale;
        mDirectRe[std::size_t(kDirectPadding + i)] = re;
        mDirectIm[std::size_t(kDirectPadding + i)] = im;
        mDirectTapsAreFinite = mDirectTapsAreFinite && std::isfinite(re) && std::isfinite(im);
    }
    mTaps = count;
    mDirectLimit = directLimit(mFftSize, count);
}

template <typename Sample>
void BlockConvolver<Sample>::clear()
{
    std::fill(mTail.begin(), mTail.end(), Sample{});
    mTailLength = 0;
}

template <typename Sample>
IppStatus BlockConvolver<Sample>::process(Sample *buffer, int length)
{
    if (length < 1 || length > kMaxFftSize)
        return ippStsSizeErr;
    if (useDirect(length)) {
        addDirectly(buffer, length);
        return ippStsNoErr;
    }
    return addByFft(buffer, length);
}

template <typename Sample>
bool BlockConvolver<Sample>::useDirect(int length) const
{
    const bool same = mDirectTapsAreFinite && length + mTaps - 1 <= mFftSize;
    if (!same || mForm == ConvolutionForm::Fft)
        return false;
    return mForm == ConvolutionForm::Direct || length <= mDirectLimit;
}

template <typename Sample>
IppStatus BlockConvolver<Sample>::addByFft(Sample *buffer, int length)
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
    mTailLength = mFftSize;
    return ippStsNoErr;
}

template <typename Sample>
void BlockConvolver<Sample>::addDirectly(Sample *buffer, int length)
{
    const DirectTaps<Real> taps{
        mDirectRe.data() + kDirectPadding, mDirectIm.data() + kDirectPadding, mTaps};
    const int reached = length + mTaps - 1; // end of the block's response
    const int end = std::max(reached, mTailLength);
    Sample *const tail = mTail.data();
    std::copy_n(buffer, length, mWork.begin()); // the outputs take its place
    directConvolution(mWork.data(), length, taps, tail, buffer, 0, length);
    directConvolution(mWork.data(), length, taps, tail, tail, length, reached);
    std::copy(tail + reached, tail + end, tail + reached - length);
    std::fill(tail + end - length, tail + end, Sample{});
    mTailLength = end - length;
}

template class BlockConvolver<COMPLEX>;
template class BlockConvolver<COMPLEX32>;
} // namespace DspCore
