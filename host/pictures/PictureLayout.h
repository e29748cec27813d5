// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>
#include <QSize>

namespace host
{
/// Where things stand in a picture, from its size alone and not from a font: what is drawn for a
/// given frequency can be counted on to be in a given column. All in pixels; everything to the left
/// of, above, below and to the right of the plot is margin.
struct PictureLayout
{
    static constexpr QSize kDefaultSize{1600, 900};

    /// labelRows: rows of text between the title and the plot. A size outside 320 x 200 to
    /// 8192 x 8192 is brought inside.
    explicit PictureLayout(QSize wanted, int labelRows = 0, bool hasColourBar = false);

    QSize size;
    int textHeight; ///< of the font
    int rowHeight;  ///< of a line of text with its space
    QRect plot;
    QRect colourBar; ///< null if there is none
};
} // namespace host
