// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/panorama/WaterfallView.h"

#include "window/frame/Theme.h"
#include "window/panorama/SpectrumLines.h"
#include "window/panorama/VisibleBand.h"

#include "pictures/AxisTicks.h"
#include "settings/Language.h"

#include <QPainter>

#include <algorithm>

namespace host
{
namespace
{
// As many as the tallest screen shows, 9 MB at 4096 bins.
constexpr int kRows = 2160;
constexpr int kTickHeight = 36;
} // namespace

WaterfallView::WaterfallView(Radio &radio, VisibleBand &band, SpectrumLines &lines, QWidget *parent)
    : BandWidget(radio, band, parent), m_history(kRows), m_image(m_history)
{
    say(this, [this] {
        setAccessibleName(tr("Waterfall"));
        setAccessibleDescription(tr("Spectra over time, the newest on top. Arrow keys tune."));
    });
    m_clock.start();
    connect(&lines, &SpectrumLines::lineReady, this, [this, &lines] {
        m_history.add(lines.waterfall(), lines.axis(), double(m_clock.nsecsElapsed()) * 1e-9);
        m_image.addNewest();
        update();
    });
}

void WaterfallView::setRange(const LevelRange &range)
{
    m_range = range;
    m_image.setLook(m_range, m_palette);
    update();
}

void WaterfallView::setPalette(ColourMap::Palette palette)
{
    m_palette = palette;
    m_image.setLook(m_range, m_palette);
    update();
}

void WaterfallView::paintEvent(QPaintEvent *)
{
    const double ratio = devicePixelRatioF();
    const QRect area = plot();
    m_image.setLook(m_range, m_palette);
    m_image.setSize(pixelsOf(area.size()));
    m_image.setBand(band().lowHz(), band().highHz());
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, kAxisWidth, height()), QColor(Theme::current().window));
    if (!m_image.paint(painter, area.topLeft(), ratio))
        update();
    paintTimes(painter);
    paintMarks(painter, true);
    if (hasFocus()) {
        painter.setPen(QColor(Theme::current().accent));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(area.adjusted(0, 0, -1, -1));
    }
}

/// Seconds before now, by the times at which the lines on the screen came.
void WaterfallView::paintTimes(QPainter &painter)
{
    const QRect area = plot();
    const int rows = std::min(m_history.count(), int(area.height() * devicePixelRatioF()));
    if (rows < 2)
        return;
    const double now = m_history.row(0).seconds;
    const double oldest = now - m_history.row(rows - 1).seconds;
    const double shown = double(rows) / devicePixelRatioF();
    const auto ticks = AxisTicks::times(0.0, oldest, std::max(2, int(shown) / kTickHeight));
    painter.setPen(QColor(Theme::current().dimText));
    for (const auto &tick : ticks.ticks) {
        // Lines come at nearly even distances, but for where the receiver paused.
        int low = 0, high = rows - 1;
        while (high - low > 1) {
            const int middle = (low + high) / 2;
            (now - m_history.row(middle).seconds < tick.value ? low : high) = middle;
        }
        const double y = area.top() + (tick.value == 0.0 ? 0.0 : high / devicePixelRatioF());
        painter.drawLine(QPointF(area.left() - 5.0, y), QPointF(area.left() - 1.0, y));
        const QString label = tick.value == 0.0 ? ticks.unit : tick.label;
        painter.drawText(QRectF(0.0, std::max(0.0, y - 8.0), kAxisWidth - 8.0, 16.0),
            Qt::AlignRight | Qt::AlignVCenter, label);
    }
}
} // namespace host
