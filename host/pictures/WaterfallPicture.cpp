// SPDX-License-Identifier: GPL-3.0-or-later
#include "WaterfallPicture.h"

#include "ColourMap.h"
#include "ColumnReduction.h"
#include "PictureFile.h"
#include "PictureStyle.h"
#include "PlotFrame.h"

#include <algorithm>
#include <limits>

namespace host
{
namespace
{
// Shares of the levels that the colours are to tell apart: one strong station may not push
// everything else into the dark.
constexpr double kLowShare = 0.1;
constexpr double kHighShare = 0.998;

constexpr int kPalette = 256;

/// The colours of levels, then those from the margin to the text, for smooth letters. A picture of
/// one byte per pixel makes a file of a third of the size.
QVector<QRgb> palette()
{
    QVector<QRgb> colours;
    for (int i = 0; i < ColourMap::kColours; ++i)
        colours << ColourMap::entry(i);
    constexpr int kShades = kPalette - ColourMap::kColours;
    const auto mix = [](int from, int to, int i) { return from + (to - from) * i / (kShades - 1); };
    for (int i = 0; i < kShades; ++i)
        colours << qRgb(mix(qRed(style::kMargin), qRed(style::kText), i),
            mix(qGreen(style::kMargin), qGreen(style::kText), i),
            mix(qBlue(style::kMargin), qBlue(style::kText), i));
    return colours;
}
} // namespace

WaterfallPicture::WaterfallPicture(const PictureAxis &axis, QSize size)
    : m_axis(axis), m_layout(size, 0, true), m_rows(m_layout.plot.width(), kMostRows)
{ }

void WaterfallPicture::addLine(double seconds, std::span<const float> levelsDb)
{
    if (!levelsDb.empty())
        m_rows.add(seconds, columnMaxima(levelsDb, m_layout.plot.width()));
}

LevelRange WaterfallPicture::range() const
{
    if (m_range)
        return *m_range;
    std::vector<float> levels;
    for (int i = 0; i < m_rows.count(); ++i)
        levels.insert(levels.end(), m_rows.row(i).begin(), m_rows.row(i).end());
    return LevelRange::holding(std::move(levels), kLowShare, kHighShare);
}

QImage WaterfallPicture::image() const
{
    const LevelRange levels = range();
    const double start = m_rows.count() > 0 ? m_rows.startOf(0) : 0.0;
    QImage image(m_layout.size, QImage::Format_RGB32);
    QPainter painter(&image);
    const PlotFrame frame(
        painter, m_layout, {m_axis.lowHz(), m_axis.highHz()}, {m_rows.end(), start});
    drawLevels(painter, levels);
    const auto xTicks =
        AxisTicks::frequencies(m_axis.lowHz(), m_axis.highHz(), frame.xTicksAtMost());
    const auto yTicks = AxisTicks::times(start, m_rows.end(), frame.yTicksAtMost() / 2);
    frame.drawTitle(m_title);
    frame.drawAxes(xTicks, "Frequency (" + xTicks.unit + ")", yTicks,
        "Time (" + yTicks.unit + "), newest at the bottom");
    drawColourBar(painter, frame, levels);
    return image;
}

void WaterfallPicture::drawLevels(QPainter &painter, const LevelRange &levels) const
{
    const int width = m_layout.plot.width();
    const int height = m_layout.plot.height();
    const auto pixelRowOf = [&](double seconds) {
        const double start = m_rows.startOf(0);
        return int((seconds - start) / (m_rows.end() - start) * height);
    };
    QImage pixels(width, height, QImage::Format_RGB32);
    pixels.fill(style::kPlot);
    std::vector<float> shown(
        std::size_t(width) * std::size_t(height), -std::numeric_limits<float>::infinity());
    for (int i = 0; i < m_rows.count(); ++i) {
        const int top = std::min(pixelRowOf(m_rows.startOf(i)), height - 1);
        const int next = pixelRowOf(i + 1 < m_rows.count() ? m_rows.startOf(i + 1) : m_rows.end());
        for (int y = top; y < std::max(top + 1, next); ++y) {
            float *line = shown.data() + std::size_t(y) * std::size_t(width);
            const auto row = m_rows.row(i);
            auto *out = reinterpret_cast<QRgb *>(pixels.scanLine(y));
            for (int x = 0; x < width; ++x) {
                line[x] = std::max(line[x], row[std::size_t(x)]);
                out[x] = ColourMap::colour(levels.heightOf(line[x]));
            }
        }
    }
    painter.drawImage(m_layout.plot.topLeft(), pixels);
}

void WaterfallPicture::drawColourBar(
    QPainter &painter, const PlotFrame &frame, const LevelRange &levels) const
{
    const QRectF bar = m_layout.colourBar;
    const double text = m_layout.textHeight;
    for (int y = 0; y < m_layout.colourBar.height(); ++y)
        painter.fillRect(QRectF(bar.left(), bar.top() + y, bar.width(), 1.0),
            QColor(ColourMap::colour(1.0 - (y + 0.5) / bar.height())));
    painter.setPen(QColor(style::kText));
    const auto ticks = AxisTicks::levels(levels.lowDb, levels.highDb, frame.yTicksAtMost());
    for (const auto &tick : ticks.ticks) {
        const double y = bar.bottom() - levels.heightOf(tick.value) * bar.height();
        frame.drawRow(y, bar.right(), bar.right() + 0.3 * text);
        painter.drawText(QRectF(bar.right() + 0.6 * text, y - text, 4.0 * text, 2.0 * text),
            Qt::AlignLeft | Qt::AlignVCenter, tick.label);
    }
    frame.drawTurned({m_layout.size.width() - text, bar.center().y()}, "Level (dBFS)");
}

bool WaterfallPicture::save(const QString &path, QString *error) const
{
    return savePng(image().convertToFormat(QImage::Format_Indexed8, palette(), Qt::ThresholdDither),
        path, error);
}
} // namespace host
