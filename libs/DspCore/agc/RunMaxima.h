// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <cstddef>
#include <vector>

namespace DspCore
{
/// Largest part of a ring of samples that is written a block at a time, without reading it whole.
///
///     ring     |  64  |  64  |  64  |  64  | ..  |  rest  |
///     maxima       *      *      *      *             *        the largest of them is the answer
///                            ^ written: only this run is read again
///
/// The answer is exact, that of largestPart() over the whole ring. Not thread-safe.
class RunMaxima
{
public:
    /// For a ring of up to that many samples nothing is allocated afterwards.
    void reserve(std::size_t samples) { mMaxima.reserve(runs(samples)); }

    /// The ring has that many samples, all zero.
    void reset(std::size_t samples) { mMaxima.assign(runs(samples), 0.0); }

    /// `count` samples of the ring of `size` samples have been written from `first` on, around the
    /// end.
    void update(const COMPLEX *ring, std::size_t size, std::size_t first, std::size_t count);

    /// Largest absolute value of any real or imaginary part.
    double largest() const;

private:
    static constexpr std::size_t kRun = 64; // samples

    static std::size_t runs(std::size_t samples) { return (samples + kRun - 1) / kRun; }

    std::vector<double> mMaxima;
};
} // namespace DspCore
