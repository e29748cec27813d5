// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRgb>

namespace host
{
/// Colours of levels. Their lightness rises evenly from dark to bright, so they read the same in
/// grey and with any colour blindness.
///
/// "inferno" and "viridis" by S. van der Walt and N. Smith (2015, public domain as CC0): from black
/// over purple and orange to pale yellow, and from purple over green to yellow; and plain grey.
class ColourMap
{
public:
    enum class Palette { Inferno, Viridis, Grey };
    static constexpr int kPalettes = 3;

    /// Distinct colours. More would not be told apart and would make larger files.
    static constexpr int kColours = 128;

    /// height 0 (darkest) to 1 (brightest).
    static QRgb colour(double height, Palette palette = Palette::Inferno);

    /// Number i of kColours.
    static QRgb entry(int i, Palette palette = Palette::Inferno);
};
} // namespace host
