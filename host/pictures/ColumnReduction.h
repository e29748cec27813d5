// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <vector>

/// A spectrum line has more bins than a picture has columns, or fewer. Column c of `width` stands
/// for the frequencies from c/width to (c+1)/width of the span, and takes the bins whose centres
/// lie there. Where there are fewer bins than columns each column takes the bin nearest to its
/// middle. An empty line and a width below 1 give nothing.
namespace host
{
/// The largest bin of each column, so that a carrier of one bin never vanishes. What is not a
/// number is passed over; minus infinity if nothing is left.
std::vector<float> columnMaxima(std::span<const float> lineDb, int width);

/// The mean power of each column, in decibels: the level of noise, which the maximum overstates.
std::vector<float> columnMeans(std::span<const float> lineDb, int width);

/// The column of a bin, for any number of either.
int columnOf(std::size_t bin, std::size_t bins, int width);
} // namespace host
