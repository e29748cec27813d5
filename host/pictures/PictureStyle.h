// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>

/// Colours of the pictures, light on dark. Those of traces and marks are from M. Okabe and K. Ito,
/// "Color Universal Design" (2008), which people with any colour blindness tell apart.
namespace host::style
{
constexpr QRgb kMargin = 0xff161b22;
constexpr QRgb kPlot = 0xff0b0e13;
constexpr QRgb kGrid = 0xff2c3542;
constexpr QRgb kEdge = 0xff7d8794;
constexpr QRgb kText = 0xffe8ecf1;

constexpr QRgb kFirstTrace = 0xff56b4e9;  // sky blue
constexpr QRgb kFirstMean = 0xff2a6a93;   // the same, darker
constexpr QRgb kSecondTrace = 0xffe69f00; // orange
constexpr QRgb kStation = 0xfff0e442;     // yellow
constexpr QRgb kNotch = 0xffcc79a7;       // reddish purple
constexpr QRgb kBand = 0x50f0e442;        // yellow, the plot shining through
} // namespace host::style
