// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnReduction.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace host
{
namespace
{
constexpr float kNothing = -std::numeric_limits<float>::infinity();

/// Each column's bin for a line with fewer bins than columns.
std::vector<float> spread(std::span<const float> line, int width)
{
    const double bins = double(line.size());
    // In an odd line the centre bin is the middle one, so all bins lie half a bin further up.
    const double shift = line.size() % 2 == 0 ? 0.0 : 0.5;
    std::vector<float> columns(std::size_t(width), kNothing);
    for (int column = 0; column < width; ++column) {
        const double place = (column + 0.5) * bins / width - shift;
        columns[std::size_t(column)] =
            line[std::size_t(std::clamp(std::round(place), 0.0, bins - 1.0))];
    }
    return columns;
}

bool isEmpty(std::span<const float> line, int width)
{
    return line.empty() || width < 1;
}
} // namespace

int columnOf(std::size_t bin, std::size_t bins, int width)
{
    // In whole numbers, as a rounded quotient could put a bin into the column before its own.
    return int((2 * bin + bins % 2) * std::size_t(width) / (2 * bins));
}

std::vector<float> columnMaxima(std::span<const float> lineDb, int width)
{
    if (isEmpty(lineDb, width))
        return {};
    if (lineDb.size() < std::size_t(width))
        return spread(lineDb, width);
    std::vector<float> columns(std::size_t(width), kNothing);
    for (std::size_t bin = 0; bin < lineDb.size(); ++bin) {
        float &column = columns[std::size_t(columnOf(bin, lineDb.size(), width))];
        if (lineDb[bin] > column)
            column = lineDb[bin];
    }
    return columns;
}

std::vector<float> columnMeans(std::span<const float> lineDb, int width)
{
    if (isEmpty(lineDb, width))
        return {};
    if (lineDb.size() < std::size_t(width))
        return spread(lineDb, width);
    std::vector<double> powers(std::size_t(width), 0.0);
    std::vector<int> counts(std::size_t(width), 0);
    for (std::size_t bin = 0; bin < lineDb.size(); ++bin) {
        if (std::isnan(lineDb[bin]))
            continue;
        const auto column = std::size_t(columnOf(bin, lineDb.size(), width));
        powers[column] += std::pow(10.0, lineDb[bin] / 10.0);
        ++counts[column];
    }
    std::vector<float> columns(std::size_t(width), kNothing);
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (counts[i] > 0)
            columns[i] = float(10.0 * std::log10(powers[i] / counts[i]));
    return columns;
}
} // namespace host
