// SPDX-License-Identifier: GPL-3.0-or-later
#include "PlotFrame.h"

#include "PictureStyle.h"

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
// In text heights.
constexpr double kTickLength = 0.3;
constexpr double kTextRoom = 20.0;     // a box that no number fills
constexpr double kXTickDistance = 6.0; // "14.0741" and a space
constexpr double kYTickDistance = 1.8;
constexpr double kLegendLine = 1.5;
constexpr double kLegendSpace = 1.2;

QRectF around(QPointF centre, double width, double height)
{
    return {centre.x() - width / 2.0, centre.y() - height / 2.0, width, height};
}
} // namespace

PlotFrame::PlotFrame(QPainter &painter, const PictureLayout &layout, Ends x, Ends y)
    : m_painter(painter), m_layout(layout), m_x(x), m_y(y)
{
    m_painter.setFont(font(layout));
    m_painter.fillRect(QRect({0, 0}, m_layout.size), QColor(style::kMargin));
    m_painter.fillRect(m_layout.plot, QColor(style::kPlot));
}

QFont PlotFrame::font(const PictureLayout &layout)
{
    QFont font("DejaVu Sans");
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(layout.textHeight);
    return font;
}

double PlotFrame::xOf(double value) const
{
    const QRect &plot = m_layout.plot;
    return plot.x() + (value - m_x.first) / (m_x.last - m_x.first) * plot.width();
}

double PlotFrame::yOf(double value) const
{
    const QRect &plot = m_layout.plot;
    return plot.y() + (m_y.last - value) / (m_y.last - m_y.first) * plot.height();
}

void PlotFrame::drawColumn(double x, double top, double bottom) const
{
    m_painter.drawLine(QPointF(std::floor(x), top), QPointF(std::floor(x), bottom));
}

void PlotFrame::drawRow(double y, double left, double right) const
{
    m_painter.drawLine(QPointF(left, std::floor(y)), QPointF(right, std::floor(y)));
}

int PlotFrame::xTicksAtMost() const
{
    return std::max(2, int(m_layout.plot.width() / (kXTickDistance * m_layout.textHeight)));
}

int PlotFrame::yTicksAtMost() const
{
    return std::max(2, int(m_layout.plot.height() / (kYTickDistance * m_layout.textHeight)));
}

void PlotFrame::drawGrid(const AxisTicks &x, const AxisTicks &y) const
{
    const QRectF plot = m_layout.plot;
    m_painter.setPen(QColor(style::kGrid));
    for (const auto &tick : x.ticks)
        drawColumn(xOf(tick.value), plot.top(), plot.bottom() - 1.0);
    for (const auto &tick : y.ticks)
        drawRow(yOf(tick.value), plot.left(), plot.right() - 1.0);
}

void PlotFrame::drawAxes(
    const AxisTicks &x, const QString &xCaption, const AxisTicks &y, const QString &yCaption) const
{
    const QRectF plot = m_layout.plot;
    const double text = m_layout.textHeight;
    const double room = kTextRoom * text;
    const double tickLength = kTickLength * text;
    m_painter.setBrush(Qt::NoBrush);
    m_painter.setPen(QColor(style::kEdge));
    m_painter.drawRect(m_layout.plot.adjusted(-1, -1, 0, 0));
    for (const auto &tick : x.ticks)
        drawColumn(xOf(tick.value), plot.bottom(), plot.bottom() + tickLength);
    for (const auto &tick : y.ticks)
        drawRow(yOf(tick.value), plot.left() - tickLength, plot.left() - 1.0);

    m_painter.setPen(QColor(style::kText));
    for (const auto &tick : x.ticks)
        m_painter.drawText(around({xOf(tick.value), plot.bottom() + 1.2 * text}, room, 2.0 * text),
            Qt::AlignCenter, tick.label);
    for (const auto &tick : y.ticks)
        m_painter.drawText(
            QRectF(plot.left() - 2.0 * tickLength - room, yOf(tick.value) - text, room, 2.0 * text),
            Qt::AlignRight | Qt::AlignVCenter, tick.label);
    m_painter.drawText(QRectF(plot.left(), plot.bottom() + 1.9 * text, plot.width(), 1.5 * text),
        Qt::AlignLeft | Qt::AlignVCenter, xCaption);
    drawTurned({text, plot.center().y()}, yCaption);
}

void PlotFrame::drawTitle(const QString &title) const
{
    const QRectF plot = m_layout.plot;
    const double width = m_layout.size.width() - plot.left() - m_layout.textHeight;
    m_painter.setPen(QColor(style::kText));
    m_painter.drawText(QRectF(plot.left(), 0.4 * m_layout.textHeight, width, m_layout.rowHeight),
        Qt::AlignLeft | Qt::AlignVCenter,
        m_painter.fontMetrics().elidedText(title, Qt::ElideRight, int(width)));
}

double PlotFrame::drawLegend(const QString &text, QRgb colour, double right) const
{
    const double height = m_layout.textHeight;
    const double width = m_painter.fontMetrics().horizontalAdvance(text);
    const double y = m_layout.plot.bottom() + 2.65 * height;
    m_painter.setPen(QColor(style::kText));
    m_painter.drawText(around({right - width / 2.0, y}, 1.2 * width + height, 1.5 * height),
        Qt::AlignCenter, text);
    const double lineEnd = right - width - 0.4 * height;
    m_painter.fillRect(
        around({lineEnd - kLegendLine * height / 2.0, y}, kLegendLine * height, height / 5.0),
        QColor(colour));
    return lineEnd - (kLegendLine + kLegendSpace) * height;
}

void PlotFrame::drawTurned(QPointF centre, const QString &text) const
{
    m_painter.save();
    m_painter.setPen(QColor(style::kText));
    m_painter.translate(centre);
    m_painter.rotate(-90.0);
    const double room = 2.0 * m_layout.plot.height();
    m_painter.drawText(around({0.0, 0.0}, room, 2.0 * m_layout.textHeight), Qt::AlignCenter, text);
    m_painter.restore();
}
} // namespace host
