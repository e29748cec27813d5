// SPDX-License-Identifier: GPL-3.0-or-later
#include "LevelRange.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace host
{
namespace
{
constexpr double kMarginDb = 3.0;
constexpr double kGridDb = 10.0;
constexpr double kLeastSpanDb = 30.0;
} // namespace

LevelRange LevelRange::holding(std::vector<float> levels, double lowShare, double highShare)
{
    std::erase_if(levels, [](float level) { return !std::isfinite(level); });
    if (levels.empty())
        return {};
    const auto quantile = [&](double share) {
        const auto place = levels.begin() + std::ptrdiff_t(share * double(levels.size() - 1));
        std::nth_element(levels.begin(), place, levels.end());
        return double(*place);
    };
    LevelRange range;
    range.lowDb = std::floor((quantile(lowShare) - kMarginDb) / kGridDb) * kGridDb;
    range.highDb = std::ceil((quantile(highShare) + kMarginDb) / kGridDb) * kGridDb;
    range.lowDb = std::min(range.lowDb, range.highDb - kLeastSpanDb);
    return range;
}
} // namespace host
