// SPDX-License-Identifier: GPL-3.0-or-later
#include "SpectrumPicture.h"

#include "ColumnReduction.h"
#include "MarkLabels.h"
#include "PictureFile.h"
#include "PictureStyle.h"
#include "PlotFrame.h"

namespace host
{
namespace
{
// The range takes in all but the deepest dips of the noise, and every carrier.
constexpr double kLowShare = 0.02;
constexpr double kHighShare = 1.0;

constexpr double kTraceWidth = 1.3; // pixels

double yOf(double level, const PlotFrame &frame, const LevelRange &range)
{
    const QRectF plot = frame.layout().plot;
    return plot.bottom() - range.heightOf(level) * plot.height();
}

/// Whether columns of pixels stand for bins rather than bins for places in the picture.
bool isReduced(const std::vector<float> &line, const PlotFrame &frame)
{
    return line.size() >= std::size_t(frame.layout().plot.width());
}

/// The points of a line of levels at the places of its bins.
QPolygonF binPoints(const std::vector<float> &line, const PictureAxis &axis, const PlotFrame &frame,
    const LevelRange &range)
{
    QPolygonF points;
    points.reserve(int(line.size()));
    for (std::size_t i = 0; i < line.size(); ++i)
        points << QPointF(
            frame.xOf(axis.frequencyOf(double(i), line.size())), yOf(line[i], frame, range));
    return points;
}

/// The points of one level per column, in the middle of the column.
QPolygonF columnPoints(
    const std::vector<float> &columns, const PlotFrame &frame, const LevelRange &range)
{
    QPolygonF points;
    points.reserve(int(columns.size()));
    for (std::size_t i = 0; i < columns.size(); ++i)
        points << QPointF(frame.layout().plot.x() + double(i) + 0.5, yOf(columns[i], frame, range));
    return points;
}

/// The area from the points down to the bottom of the plot.
void fillBelow(QPainter &painter, QPolygonF points, double bottom, QRgb colour)
{
    if (points.isEmpty())
        return;
    points << QPointF(points.last().x(), bottom) << QPointF(points.first().x(), bottom);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(colour));
    painter.drawPolygon(points);
}

void drawLine(QPainter &painter, const std::vector<float> &line, const PictureAxis &axis,
    const PlotFrame &frame, const LevelRange &range, QRgb colour)
{
    painter.setPen(QPen(QColor(colour), kTraceWidth));
    if (isReduced(line, frame))
        painter.drawPolyline(
            columnPoints(columnMaxima(line, frame.layout().plot.width()), frame, range));
    else
        painter.drawPolyline(binPoints(line, axis, frame, range));
}

/// The area below the mean power of the columns.
void drawMeans(QPainter &painter, const std::vector<float> &line, const PlotFrame &frame,
    const LevelRange &range)
{
    if (!isReduced(line, frame))
        return;
    const QRectF plot = frame.layout().plot;
    fillBelow(painter, columnPoints(columnMeans(line, int(plot.width())), frame, range),
        plot.bottom(), style::kFirstMean);
}

void drawBands(QPainter &painter, const std::vector<PictureBand> &bands, const PlotFrame &frame)
{
    const QRectF plot = frame.layout().plot;
    for (const PictureBand &band : bands) {
        const double left = frame.xOf(band.lowHz);
        // A band narrower than a column is still to be seen.
        const double width = std::max(1.0, frame.xOf(band.highHz) - left);
        painter.fillRect(QRectF(left, plot.top(), width, plot.height()).intersected(plot),
            QColor::fromRgba(style::kBand));
    }
}
} // namespace

void SpectrumPicture::setLine(std::vector<float> levelsDb, const QString &name)
{
    m_first = {std::move(levelsDb), name};
}

void SpectrumPicture::setSecondLine(std::vector<float> levelsDb, const QString &name)
{
    m_second = {std::move(levelsDb), name};
}

QRect SpectrumPicture::plotArea() const
{
    const MarkLabels labels(m_marks, m_axis, PictureLayout(m_size));
    return PictureLayout(m_size, labels.rows()).plot;
}

LevelRange SpectrumPicture::range() const
{
    if (m_range)
        return *m_range;
    const int width = PictureLayout(m_size).plot.width();
    std::vector<float> shown = columnMeans(m_first.levelsDb, width);
    for (const std::vector<float> &line : {m_first.levelsDb, m_second.levelsDb}) {
        const std::vector<float> maxima = columnMaxima(line, width);
        shown.insert(shown.end(), maxima.begin(), maxima.end());
    }
    return LevelRange::holding(std::move(shown), kLowShare, kHighShare);
}

QImage SpectrumPicture::image() const
{
    const MarkLabels labels(m_marks, m_axis, PictureLayout(m_size));
    const PictureLayout layout(m_size, labels.rows());
    const LevelRange levels = range();
    QImage image(layout.size, QImage::Format_RGB32);
    QPainter painter(&image);
    const PlotFrame frame(
        painter, layout, {m_axis.lowHz(), m_axis.highHz()}, {levels.lowDb, levels.highDb});
    const auto xTicks =
        AxisTicks::frequencies(m_axis.lowHz(), m_axis.highHz(), frame.xTicksAtMost());
    const auto yTicks = AxisTicks::levels(levels.lowDb, levels.highDb, frame.yTicksAtMost());
    frame.drawTitle(m_title);
    frame.drawGrid(xTicks, yTicks);
    drawBands(painter, m_bands, frame);
    labels.drawLines(painter, frame);
    drawTraces(painter, frame, levels);
    labels.drawTexts(painter, frame);
    frame.drawAxes(xTicks, frequencyCaption(xTicks.unit), yTicks, m_levelCaption);
    drawLegend(frame);
    return image;
}

void SpectrumPicture::drawTraces(
    QPainter &painter, const PlotFrame &frame, const LevelRange &levels) const
{
    painter.save();
    painter.setClipRect(frame.layout().plot);
    painter.setRenderHint(QPainter::Antialiasing);
    drawMeans(painter, m_first.levelsDb, frame, levels);
    drawLine(painter, m_second.levelsDb, m_axis, frame, levels, style::kSecondTrace);
    drawLine(painter, m_first.levelsDb, m_axis, frame, levels, style::kFirstTrace);
    painter.restore();
}

void SpectrumPicture::drawLegend(const PlotFrame &frame) const
{
    const QRect &plot = frame.layout().plot;
    double right = plot.x() + plot.width();
    if (!m_second.levelsDb.empty())
        right = frame.drawLegend(m_second.name, style::kSecondTrace, right);
    if (isReduced(m_first.levelsDb, frame))
        right = frame.drawLegend("mean per pixel column", style::kFirstMean, right);
    if (!m_first.levelsDb.empty())
        frame.drawLegend(m_first.name, style::kFirstTrace, right);
}

QString SpectrumPicture::frequencyCaption(const QString &unit) const
{
    const QString caption = "Frequency (" + unit + ")";
    if (m_first.levelsDb.empty())
        return caption;
    const double binHz = m_axis.binHz(m_first.levelsDb.size());
    return caption + QString(", %1 Hz per bin").arg(binHz, 0, 'g', 4);
}

bool SpectrumPicture::save(const QString &path, QString *error) const
{
    return savePng(image(), path, error);
}
} // namespace host
