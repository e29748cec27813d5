// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pictures/PictureAxis.h"

#include <cstdint>
#include <vector>

namespace host
{
/// The last lines of the spectrum in all their bins, newest first, so that a view can be drawn anew
/// at another zoom. A level takes a byte; the memory is bounded by rows and bins.
class WaterfallHistory
{
public:
    static constexpr double kLowestDb = -160.0;
    static constexpr double kStepDb = 0.7; ///< up to 18.5 dBFS

    struct Row
    {
        PictureAxis axis;
        double seconds = 0.0; ///< on any clock that does not run backwards
        std::vector<std::uint8_t> levels;
    };

    explicit WaterfallHistory(int mostRows) : m_rows(std::size_t(mostRows)) { }

    /// dBFS, one a bin.
    void add(const std::vector<float> &lineDb, const PictureAxis &axis, double seconds);

    int count() const { return m_count; }
    int mostRows() const { return int(m_rows.size()); }

    /// 0 is the newest.
    const Row &row(int age) const { return m_rows[(m_newest + std::size_t(age)) % m_rows.size()]; }

private:
    std::vector<Row> m_rows;
    std::size_t m_newest = 0;
    int m_count = 0;
};
} // namespace host
