// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace host
{
/// Rows of levels over time in bounded memory. Once all rows are in use, neighbours are merged by
/// their maximum and each row stands for twice as many lines from then on: whatever was the largest
/// level of a column stays it, only its time gets coarser. One thread at a time.
class WaterfallRows
{
public:
    /// columns above 0; mostRows even, above 0. At most columns * mostRows levels are held.
    WaterfallRows(int columns, int mostRows);

    /// Appends a line of one level per column (others are a programming error). A time before the
    /// last line's counts as that.
    void add(double seconds, std::span<const float> columns);

    int count() const { return int(m_starts.size()); }
    std::size_t lines() const { return m_lines; }

    std::span<const float> row(int i) const;

    /// A row stands for the time from its first line to the next row's; the last one to end().
    double startOf(int i) const { return m_starts.at(std::size_t(i)); }

    /// One mean distance of two lines after the last. After a single line, or lines all of one
    /// time, one second after it.
    double end() const;

private:
    float *levelsOf(int i) { return m_levels.data() + std::size_t(i) * m_columns; }
    void merge(int into, const float *levels);
    void halve();

    const std::size_t m_columns;
    const int m_mostRows;
    std::vector<float> m_levels;
    std::vector<double> m_starts;
    double m_last = 0.0; // time of the last line
    std::size_t m_lines = 0;
    std::size_t m_linesPerRow = 1;
    std::size_t m_linesInLast = 0; // of the last row, up to m_linesPerRow
};
} // namespace host
