// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRgb>

namespace host
{
/// Colours of levels: "inferno" by S. van der Walt and N. Smith (2015, public domain as CC0), from
/// black over purple and orange to pale yellow. Its lightness rises evenly, so it reads the same in
/// grey and with any colour blindness.
class ColourMap
{
public:
    /// Distinct colours. More would not be told apart and would make larger files.
    static constexpr int kColours = 128;

    /// height 0 (darkest) to 1 (brightest).
    static QRgb colour(double height);

    /// Number i of kColours.
    static QRgb entry(int i);
};
} // namespace host
