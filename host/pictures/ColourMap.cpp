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

// The same of the other map.
constexpr std::array<QRgb, 18> kViridis{0x440154, 0x48186a, 0x472d7b, 0x424086, 0x3b528b, 0x33638d,
    0x2c728e, 0x26828e, 0x21918c, 0x1fa088, 0x28ae80, 0x3fbc73, 0x5ec962, 0x84d44b, 0xaddc30,
    0xd8e219, 0xf0e51c, 0xfde725};
constexpr std::array<QRgb, 18> kGrey{0x000000, 0x0f0f0f, 0x1e1e1e, 0x2d2d2d, 0x3c3c3c, 0x4b4b4b,
    0x5a5a5a, 0x696969, 0x787878, 0x878787, 0x969696, 0xa5a5a5, 0xb4b4b4, 0xc3c3c3, 0xd2d2d2,
    0xe1e1e1, 0xf0f0f0, 0xffffff};
using Nodes = std::array<QRgb, 18>;

QRgb interpolated(const Nodes &nodes, double height)
{
    const double place = std::clamp(height, 0.0, 1.0) * double(nodes.size() - 1);
    const auto below = std::min(std::size_t(place), nodes.size() - 2);
    const double share = place - double(below);
    const QRgb a = nodes[below];
    const QRgb b = nodes[below + 1];
    const auto mix = [&](int from, int to) { return int(std::lround(from + (to - from) * share)); };
    return qRgb(mix(qRed(a), qRed(b)), mix(qGreen(a), qGreen(b)), mix(qBlue(a), qBlue(b)));
}

using Colours = std::array<QRgb, ColourMap::kColours>;

Colours colours(const Nodes &nodes)
{
    Colours colours;
    for (int i = 0; i < ColourMap::kColours; ++i)
        colours[std::size_t(i)] = interpolated(nodes, i / double(ColourMap::kColours - 1));
    return colours;
}
} // namespace

QRgb ColourMap::entry(int i, Palette palette)
{
    static const std::array<Colours, kPalettes> tables{
        colours(kInferno), colours(kViridis), colours(kGrey)};
    return tables[std::size_t(palette)].at(std::size_t(i));
}

QRgb ColourMap::colour(double height, Palette palette)
{
    return entry(int(std::lround(std::clamp(height, 0.0, 1.0) * (kColours - 1))), palette);
}
} // namespace host
