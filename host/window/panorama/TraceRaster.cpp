// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/panorama/TraceRaster.h"

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
constexpr std::int32_t kOne = 256; // of a pixel, and of an alpha
constexpr std::size_t kBlock = 16; // columns

/// a + (b - a) * share / 256, two of the four bytes at a time.
inline std::uint32_t mix(std::uint32_t a, std::uint32_t b, std::uint32_t share)
{
    constexpr std::uint32_t kPair = 0x00ff00ff;
    const std::uint32_t rest = 256 - share;
    const std::uint32_t low = ((a & kPair) * rest + (b & kPair) * share) >> 8;
    const std::uint32_t high = ((a >> 8) & kPair) * rest + ((b >> 8) & kPair) * share;
    return (low & kPair) | (high & ~kPair);
}
} // namespace

void TraceRaster::draw(QImage &picture, const std::vector<float> &rows, const Look &look)
{
    const std::size_t width = std::min(rows.size(), std::size_t(picture.width()));
    if (width == 0)
        return;
    m_top.resize(width);
    m_bottom.resize(width);
    // The line reaches half way to either neighbour, so that steep flanks hang together.
    const float half = float(look.width) / 2.0f;
    const float lowest = float(picture.height()) + 1.0f;
    for (std::size_t x = 0; x < width; ++x) {
        const float here = rows[x];
        const float left = 0.5f * (here + rows[x > 0 ? x - 1 : x]);
        const float right = 0.5f * (here + rows[x + 1 < width ? x + 1 : x]);
        const float top = std::min({here, left, right}) - half;
        const float bottom = std::max({here, left, right}) + half;
        m_top[x] = std::int32_t(std::clamp(top, -2.0f, lowest) * float(kOne));
        m_bottom[x] = std::int32_t(std::clamp(bottom, -2.0f, lowest) * float(kOne));
    }
    m_blocks.clear();
    for (std::size_t x = 0; x < width; x += kBlock) {
        const auto end = std::ptrdiff_t(std::min(width, x + kBlock));
        m_blocks.push_back(
            {*std::min_element(m_top.begin() + std::ptrdiff_t(x), m_top.begin() + end),
                *std::max_element(m_bottom.begin() + std::ptrdiff_t(x), m_bottom.begin() + end)});
    }
    const std::uint32_t line = look.line | 0xff000000u;
    const std::uint32_t area = look.area | 0xff000000u;
    const std::uint32_t areaShare = std::uint32_t(qAlpha(look.area)) * 256 / 255;
    for (int y = 0; y < picture.height(); ++y) {
        auto *pixels = reinterpret_cast<std::uint32_t *>(picture.scanLine(y));
        const std::int32_t begin = y * kOne;
        const std::int32_t end = begin + kOne;
        for (std::size_t i = 0; i < m_blocks.size(); ++i) {
            const std::size_t first = i * kBlock;
            const std::size_t last = std::min(width, first + kBlock);
            if (end <= m_blocks[i].top)
                continue;
            if (begin >= m_blocks[i].bottom) {
                if (areaShare > 0)
                    for (std::size_t x = first; x < last; ++x)
                        pixels[x] = mix(pixels[x], area, areaShare);
                continue;
            }
            const std::int32_t *tops = m_top.data();
            const std::int32_t *bottoms = m_bottom.data();
            for (std::size_t x = first; x < last; ++x) {
                const std::int32_t covered =
                    std::max(0, std::min(end, bottoms[x]) - std::max(begin, tops[x]));
                const std::int32_t below = std::clamp(end - bottoms[x], 0, kOne);
                const std::uint32_t filled =
                    mix(pixels[x], area, std::uint32_t(below) * areaShare / 256);
                pixels[x] = mix(filled, line, std::uint32_t(covered));
            }
        }
    }
}
} // namespace host
