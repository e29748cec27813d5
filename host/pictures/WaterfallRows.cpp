// SPDX-License-Identifier: GPL-3.0-or-later
#include "WaterfallRows.h"

#include <algorithm>
#include <cassert>

namespace host
{
namespace
{
constexpr double kLengthOfOneLine = 1.0; // seconds, arbitrary
} // namespace

WaterfallRows::WaterfallRows(int columns, int mostRows)
    : m_columns(std::size_t(columns)), m_mostRows(mostRows)
{
    assert(columns > 0 && mostRows > 0 && mostRows % 2 == 0);
}

void WaterfallRows::add(double seconds, std::span<const float> columns)
{
    assert(columns.size() == m_columns);
    m_last = m_lines == 0 ? seconds : std::max(m_last, seconds);
    ++m_lines;
    if (m_linesInLast < m_linesPerRow && count() > 0) {
        merge(count() - 1, columns.data());
        ++m_linesInLast;
        return;
    }
    if (count() == m_mostRows)
        halve();
    m_levels.insert(m_levels.end(), columns.begin(), columns.end());
    m_starts.push_back(m_last);
    m_linesInLast = 1;
}

std::span<const float> WaterfallRows::row(int i) const
{
    return std::span(m_levels).subspan(std::size_t(i) * m_columns, m_columns);
}

double WaterfallRows::end() const
{
    const double length = m_starts.empty() ? 0.0 : m_last - m_starts.front();
    return m_last + (length > 0.0 ? length / double(m_lines - 1) : kLengthOfOneLine);
}

void WaterfallRows::merge(int into, const float *levels)
{
    float *row = levelsOf(into);
    for (std::size_t i = 0; i < m_columns; ++i)
        row[i] = std::max(row[i], levels[i]);
}

void WaterfallRows::halve()
{
    for (int i = 0; i < m_mostRows / 2; ++i) {
        merge(2 * i, levelsOf(2 * i + 1));
        std::copy_n(levelsOf(2 * i), m_columns, levelsOf(i));
        m_starts[std::size_t(i)] = m_starts[std::size_t(2 * i)];
    }
    m_starts.resize(std::size_t(m_mostRows / 2));
    m_levels.resize(m_starts.size() * m_columns);
    m_linesPerRow *= 2;
}
} // namespace host
