// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AxisTicks.h"
#include "PictureLayout.h"

#include <QFont>
#include <QPainter>

namespace host
{
/// The frame of a plot with two straight axes: maps values to pixels and draws what stands around
/// the data. One picture, one thread.
class PlotFrame
{
public:
    /// The values at the two ends of an axis: left and right, or bottom and top.
    struct Ends
    {
        double first;
        double last;
    };

    /// Clears the picture, whose painter must be of layout.size and outlive the frame.
    PlotFrame(QPainter &painter, const PictureLayout &layout, Ends x, Ends y);

    /// The font of all texts of a picture.
    static QFont font(const PictureLayout &layout);

    /// Pixels, fractions of one included: column c reaches from c to c + 1.
    double xOf(double value) const;
    double yOf(double value) const;

    /// One column or row of pixels, sharp: the one that holds the value.
    void drawColumn(double x, double top, double bottom) const;
    void drawRow(double y, double left, double right) const;

    /// Lines through the plot. Before the data.
    void drawGrid(const AxisTicks &x, const AxisTicks &y) const;

    /// The edge of the plot, the numbers of the axes and their captions. After the data.
    void drawAxes(const AxisTicks &x, const QString &xCaption, const AxisTicks &y,
        const QString &yCaption) const;

    /// In the upper margin, shortened if it is too long.
    void drawTitle(const QString &title) const;

    /// In the lower margin, to the right: a line in the colour and what it is. `right` is where it
    /// ends; returns where the next one to its left may end.
    double drawLegend(const QString &text, QRgb colour, double right) const;

    /// How many numbers an axis has room for.
    int xTicksAtMost() const;
    int yTicksAtMost() const;

    /// Text turned by a quarter, upward, around a centre.
    void drawTurned(QPointF centre, const QString &text) const;

    const PictureLayout &layout() const { return m_layout; }

private:
    QPainter &m_painter;
    const PictureLayout m_layout;
    const Ends m_x;
    const Ends m_y;
};
} // namespace host
