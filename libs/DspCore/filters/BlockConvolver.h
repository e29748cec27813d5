// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/AlignedVector.h"
#include "DspCore/fft/FFT64.h"
#include "DspCore/filters/PartitionedConvolver.h"

#include <span>
#include <type_traits>

namespace DspCore
{
/// How BlockConvolver works: by partitions wherever that gives the same, or always by plain
/// overlap-add.
enum class ConvolutionForm {
    Chosen,
    OverlapAdd,
};

/// Convolution of a running stream with one complex filter of up to 7935 taps after another, scaled
/// to a gain of about 1.
///
/// It answers as overlap-add does with one transform a block:
///
///   tail     |t t t t t t t t t t . . . . . . . . .|   left by earlier blocks
///   response |r r r r r r r r r r r r r r . . . . .|   of this block: n + taps - 1 samples
///            '-------'-----------------------------'
///            n samples  the new tail: sum of both, moved down by n
///            go out
///
/// but works by partitions (see PartitionedConvolver), at a tenth of the cost and less. The tail is
/// then only what earlier filters left: a new filter lets the old one run on over zeros, and what
/// comes out is added to the stream. The tail moves over the FFT size alone: what stands above a
/// size that shrank stays there and comes back when the size grows again.
///
/// Plain overlap-add remains for filters whose answer depends on the transform: if block and taps
/// together exceed the FFT size the response wraps around its end, and a filter that is not finite
/// (one of no width has no gain to scale) spoils the tail up to the FFT size.
///
/// All memory is taken at construction and setFilter(). Not thread-safe.
template <typename Sample>
class BlockConvolver
{
public:
    static constexpr int kMaxFftSize = 16384;
    static constexpr int kMaxTaps = 7935;
    static constexpr int kMaxBlock = 512; // samples

    BlockConvolver();

    /// Takes the filter and scales it so that the largest real or imaginary part of its spectrum
    /// (signed, not the largest magnitude) is 1. Count is 1..kMaxTaps, the FFT size a power of two
    /// up to kMaxFftSize.
    void setFilter(const Sample *taps, int count, int fftSize);

    /// Filters a block of 1..kMaxBlock samples, at most the FFT size, in place.
    IppStatus process(Sample *buffer, int length);

    void clear();

    /// The scaled taps, if a sample's response is just those; none if it depends on the transform.
    std::span<const Sample> taps() const;

    /// Whether something of an earlier filter is still to come.
    bool hasTail() const { return !mInPartitions || mTailStart < mFftSize; }

    /// For tests and measurements, before the first setFilter().
    void setForm(ConvolutionForm form) { mForm = form; }

private:
    using Real = typename Primitives<Sample>::Real;
    using Fft = std::conditional_t<std::is_same_v<Sample, COMPLEX>, FFT64, FFT32>;

    void keepTail();
    void addTail(Sample *buffer, int length);
    IppStatus overlapAdd(Sample *buffer, int length);

    ConvolutionForm mForm = ConvolutionForm::Chosen;
    bool mInPartitions = false;
    PartitionedConvolver<Sample> mConvolver;
    Fft mFft;
    int mFftSize = 0;
    AlignedVector<Sample> mSpectrum;
    AlignedVector<Sample> mTail;
    int mTailStart = 0; // what was added already is not moved; at the FFT size all was
    AlignedVector<Sample> mWork;
};

extern template class BlockConvolver<COMPLEX>;
extern template class BlockConvolver<COMPLEX32>;
} // namespace DspCore
