// SPDX-License-Identifier: GPL-3.0-or-later
#include "MarkLabels.h"

#include "PictureStyle.h"

#include <QFontMetricsF>

#include <algorithm>
#include <array>

namespace host
{
namespace
{
QColor colourOf(const PictureMark &mark)
{
    return QColor(mark.kind == PictureMark::Kind::Notch ? style::kNotch : style::kStation);
}

/// Where the label ends and its line begins.
double bottomOf(int row, const PictureLayout &layout)
{
    return layout.plot.y() - std::max(0, row) * layout.rowHeight;
}
} // namespace

MarkLabels::MarkLabels(
    const std::vector<PictureMark> &marks, const PictureAxis &axis, const PictureLayout &layout)
{
    const QFontMetricsF metrics(PlotFrame::font(layout));
    const QRectF plot = layout.plot;
    std::array<double, kMostRows> ends; // where each row is free from
    ends.fill(0.0);

    std::vector<PictureMark> sorted = marks;
    std::sort(sorted.begin(), sorted.end(),
        [](const auto &a, const auto &b) { return a.frequencyHz < b.frequencyHz; });
    for (const PictureMark &mark : sorted) {
        if (!(mark.frequencyHz >= axis.lowHz() && mark.frequencyHz <= axis.highHz()))
            continue;
        Placed label{mark, 0.0, metrics.horizontalAdvance(mark.label), -1};
        const double x =
            plot.left() + (mark.frequencyHz - axis.lowHz()) / axis.spanHz * plot.width();
        label.left = std::clamp(
            x - label.width / 2.0, 0.0, std::max(0.0, layout.size.width() - label.width));
        const auto row =
            std::find_if(ends.begin(), ends.end(), [&](double end) { return end <= label.left; });
        if (row != ends.end() && !mark.label.isEmpty()) {
            label.row = int(row - ends.begin());
            *row = label.left + label.width + layout.textHeight;
            m_rows = std::max(m_rows, label.row + 1);
        }
        m_labels.push_back(label);
    }
}

void MarkLabels::drawLines(QPainter &painter, const PlotFrame &frame) const
{
    const QRect &plot = frame.layout().plot;
    for (const Placed &label : m_labels) {
        painter.setPen(QPen(colourOf(label.mark), 1.0, Qt::DashLine));
        frame.drawColumn(frame.xOf(label.mark.frequencyHz), bottomOf(label.row, frame.layout()),
            plot.y() + plot.height());
    }
}

void MarkLabels::drawTexts(QPainter &painter, const PlotFrame &frame) const
{
    const PictureLayout &layout = frame.layout();
    for (const Placed &label : m_labels) {
        if (label.row < 0)
            continue;
        const QRectF box(label.left, bottomOf(label.row, layout) - layout.rowHeight, label.width,
            layout.rowHeight);
        // Labels cover the lines that lead to those further up.
        painter.fillRect(box, QColor(style::kMargin));
        painter.setPen(colourOf(label.mark));
        painter.drawText(box.adjusted(-5, 0, 5, 0), Qt::AlignCenter, label.mark.label);
    }
}
} // namespace host
