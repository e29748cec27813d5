// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/panorama/ColumnMap.h"

#include <algorithm>
#include <cmath>

namespace host
{
ColumnMap::ColumnMap(
    const PictureAxis &axis, std::size_t bins, double lowHz, double highHz, int columns)
    : m_columns(std::size_t(std::max(0, columns))), m_bins(bins)
{
    if (bins < 2)
        return;
    const double first = axis.indexOf(lowHz, bins);
    const double perColumn = (axis.indexOf(highHz, bins) - first) / std::max(1, columns);
    const double last = double(bins - 1);
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        Column &column = m_columns[i];
        // A bin lies in the column that its middle lies in.
        const double left = std::ceil(first + double(i) * perColumn);
        const double right = std::ceil(first + double(i + 1) * perColumn);
        if (right <= 0.0 || left > last) {
            // Nothing, unless the middle of the column is next to the end of the line.
        } else if (right > left && perColumn >= 1.0) {
            column.first = std::size_t(std::max(0.0, left));
            column.end = std::size_t(std::min(last + 1.0, right));
            continue;
        }
        const double place = first + (double(i) + 0.5) * perColumn;
        if (place < -0.5 || place > last + 0.5)
            continue;
        const double inside = std::clamp(place, 0.0, last);
        column.first = column.end = std::min(std::size_t(inside), bins - 2);
        column.share = float(inside - double(column.first));
    }
}
} // namespace host
