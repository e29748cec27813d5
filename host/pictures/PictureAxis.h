// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace host
{
/// The frequencies that a spectrum line of n bins stands for: index n/2 (rounded down) is the
/// centre, neighbours are spanHz / n apart.
struct PictureAxis
{
    double centerHz = 0.0;
    double spanHz = 0.0; ///< above 0

    double lowHz() const { return centerHz - spanHz / 2.0; }
    double highHz() const { return centerHz + spanHz / 2.0; }
    double binHz(std::size_t bins) const { return spanHz / double(bins); }

    /// Of a bin, or of a place between two bins.
    double frequencyOf(double index, std::size_t bins) const
    {
        return centerHz + (index - double(bins / 2)) * binHz(bins);
    }

    /// The inverse of frequencyOf().
    double indexOf(double frequencyHz, std::size_t bins) const
    {
        return (frequencyHz - centerHz) / binHz(bins) + double(bins / 2);
    }
};
} // namespace host
