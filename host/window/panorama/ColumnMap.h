// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pictures/PictureAxis.h"

#include <cstddef>
#include <vector>

namespace host
{
/// Which bins of a spectrum line each column of a view stands for. Of several bins the largest
/// counts, so that no narrow carrier is lost; between bins that are further apart than columns the
/// level runs in straight lines. What lies outside the line is `empty`.
///
/// Building it takes some divisions a column; it holds until band, zoom or width change.
class ColumnMap
{
public:
    ColumnMap() = default;

    /// The line's axis and bins, the frequencies at the left and the right edge, the columns.
    ColumnMap(const PictureAxis &axis, std::size_t bins, double lowHz, double highHz, int columns);

    int columns() const { return int(m_columns.size()); }
    std::size_t bins() const { return m_bins; }

    /// Line of bins() values into columns() values.
    template <typename Value>
    void reduce(const Value *line, Value *columns, Value empty) const
    {
        for (const Column &column : m_columns) {
            Value value = empty;
            if (column.first < column.end) {
                value = line[column.first];
                for (std::size_t bin = column.first + 1; bin < column.end; ++bin)
                    value = line[bin] > value ? line[bin] : value;
            } else if (column.share >= 0.0f) {
                const Value below = line[column.first];
                const Value above = line[column.first + 1];
                value = Value(float(below) + column.share * (float(above) - float(below)));
            }
            *columns++ = value;
        }
    }

private:
    struct Column
    {
        std::size_t first = 0;
        std::size_t end = 0; // first or below: no bin lies in the column
        float share = -1.0f; // of the way from `first` to the next bin; below 0: outside
    };
    std::vector<Column> m_columns;
    std::size_t m_bins = 0;
};
} // namespace host
