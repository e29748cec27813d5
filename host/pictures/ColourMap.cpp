// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColourMap.h"

#include <QColor>

#include <algorithm>
#include <array>
#include <cmath>

namespace host
{
namespace
{
// Every 15th of the map's 256 colours; straight lines between them are off by at most 5 in 255.
constexpr std::array<QRgb, 18> kInferno{0x000004, 0x0a0722, 0x1e0c45, 0x380962, 0x510e6c, 0x69166e,
    0x801f6c, 0x982766, 0xb0315b, 0xc63d4d, 0xd94d3d, 0xe9612b, 0xf47918, 0xfa9407, 0xfcb014,
    0xf8cd37, 0xf2ea69, 0xfcffa4};

QRgb interpolated(double height)
{
    const double place = std::clamp(height, 0.0, 1.0) * double(kInferno.size() - 1);
    const auto below = std::min(std::size_t(place), kInferno.size() - 2);
    const double share = place - double(below);
    const QRgb a = kInferno[below];
    const QRgb b = kInferno[below + 1];
    const auto mix = [&](int from, int to) { return int(std::lround(from + (to - from) * share)); };
    return qRgb(mix(qRed(a), qRed(b)), mix(qGreen(a), qGreen(b)), mix(qBlue(a), qBlue(b)));
}

std::array<QRgb, ColourMap::kColours> table()
{
    std::array<QRgb, ColourMap::kColours> colours;
    for (int i = 0; i < ColourMap::kColours; ++i)
        colours[std::size_t(i)] = interpolated(i / double(ColourMap::kColours - 1));
    return colours;
}
} // namespace

QRgb ColourMap::entry(int i)
{
    static const auto colours = table();
    return colours.at(std::size_t(i));
}

QRgb ColourMap::colour(double height)
{
    return entry(int(std::lround(std::clamp(height, 0.0, 1.0) * (kColours - 1))));
}
} // namespace host
