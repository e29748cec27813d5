// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PictureAxis.h"
#include "PictureMark.h"
#include "PlotFrame.h"

#include <vector>

namespace host
{
/// Puts the labels of marks into rows above a plot so that none covers another.
class MarkLabels
{
public:
    /// Beyond these rows labels are left out; their lines stay.
    static constexpr int kMostRows = 4;

    /// Takes the marks inside the axis, in the plot of `layout` (of which only the horizontal
    /// extent counts).
    MarkLabels(const std::vector<PictureMark> &marks, const PictureAxis &axis,
        const PictureLayout &layout);

    int rows() const { return m_rows; }

    /// On a frame whose layout has rows() rows: the lines from the labels down through the plot,
    /// before the data, which they are not to hide; then the labels.
    void drawLines(QPainter &painter, const PlotFrame &frame) const;
    void drawTexts(QPainter &painter, const PlotFrame &frame) const;

private:
    struct Placed
    {
        PictureMark mark;
        double left; // pixels, of the label
        double width;
        int row; // 0 is next to the plot; -1: no room
    };
    std::vector<Placed> m_labels;
    int m_rows = 0;
};
} // namespace host
