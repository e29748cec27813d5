// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/AlignedVector.h"
#include "DspCore/fft/FFT64.h"

#include <type_traits>

namespace DspCore
{
/// How BlockConvolver works: as is faster for the block at hand, or always by one of its two ways.
/// Direct falls back to Fft where the direct sum would differ (see BlockConvolver).
enum class ConvolutionForm {
    Chosen,
    Fft,
    Direct,
};

/// Overlap-add convolution of a running stream with one complex filter of up to 7935 taps.
///
///   tail     |t t t t t t t t t t . . . . . . . . .|   left by earlier blocks
///   response |r r r r r r r r r r r r r r . . . . .|   of this block: n + taps - 1 samples
///            '-------'-----------------------------'
///            n samples  the new tail: sum of both, moved down by n
///            go out
///
/// The response is found in one of two ways with the same result but for rounding:
/// - Fft: transform of the block, product with the filter's spectrum, inverse transform. The cost
/// is
///   that of two transforms, however short the block.
/// - Direct: the sum over the block's samples, cheaper for short blocks: at a high input rate the
///   blocks behind a decimator are a few samples long, and a filter of 1570 taps stands behind it.
///
/// If block and taps together exceed the FFT size, the Fft way wraps around the end; then it is the
/// only one used, as it is for a filter that is not finite (one of no width has no gain to scale).
///
/// A new filter leaves the tail, which rings out. The tail is moved over the FFT size alone: what
/// stands above a size that shrank stays there and comes back when the size grows again.
///
/// All memory is taken at construction and setFftSize(). Not thread-safe.
template <typename Sample>
class BlockConvolver
{
public:
    using Real = typename Primitives<Sample>::Real;

    static constexpr int kMaxFftSize = 16384;
    static constexpr int kMaxTaps = 7935;

    BlockConvolver();

    /// A power of two up to kMaxFftSize.
    void setFftSize(int size);
    int fftSize() const { return mFftSize; }

    /// Takes the filter and scales it so that the largest real or imaginary part of its spectrum
    /// (signed, not the largest magnitude) is 1. Count is 1..kMaxTaps.
    void setTaps(const Sample *taps, int count);

    /// Filters a block of 1 sample up to the FFT size in place.
    IppStatus process(Sample *buffer, int length);

    void clear();
    void setForm(ConvolutionForm form) { mForm = form; }

private:
    using Fft = std::conditional_t<std::is_same_v<Sample, COMPLEX>, FFT64, FFT32>;

    void setDirectTaps(const Sample *taps, int count, Real scale);
    bool useDirect(int length) const;
    IppStatus addByFft(Sample *buffer, int length);
    void addDirectly(Sample *buffer, int length);

    ConvolutionForm mForm = ConvolutionForm::Chosen;
    Fft mFft;
    int mFftSize = 0;
    int mTaps = 0;
    int mTailLength = 0;  // the tail is zero from here to the FFT size
    int mDirectLimit = 0; // samples; longer blocks are cheaper by FFT
    bool mDirectTapsAreFinite = false;
    AlignedVector<Sample> mSpectrum;
    AlignedVector<Sample> mTail;
    AlignedVector<Sample> mWork;
    AlignedVector<Real> mDirectRe; // scaled taps with zeros before and after
    AlignedVector<Real> mDirectIm;
};

extern template class BlockConvolver<COMPLEX>;
extern template class BlockConvolver<COMPLEX32>;
} // namespace DspCore
