// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/panorama/WaterfallHistory.h"

#include <algorithm>

namespace host
{
void WaterfallHistory::add(
    const std::vector<float> &lineDb, const PictureAxis &axis, double seconds)
{
    m_newest = (m_newest + m_rows.size() - 1) % m_rows.size();
    m_count = std::min(m_count + 1, int(m_rows.size()));
    Row &row = m_rows[m_newest];
    row.axis = axis;
    row.seconds = seconds;
    row.levels.resize(lineDb.size());
    constexpr float kScale = float(1.0 / kStepDb);
    for (std::size_t i = 0; i < lineDb.size(); ++i) {
        const float level = (lineDb[i] - float(kLowestDb)) * kScale;
        row.levels[i] = std::uint8_t(level > 0.0f ? std::min(level, 255.0f) : 0.0f);
    }
}
} // namespace host
