// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/panorama/PanoramaView.h"

#include "window/frame/Theme.h"
#include "window/panorama/SpectrumLines.h"
#include "window/panorama/VisibleBand.h"

#include "radio/Radio.h"

#include "pictures/AxisTicks.h"
#include "settings/Language.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace host
{
namespace
{
constexpr float kNothing = -std::numeric_limits<float>::infinity();

constexpr double kLeastRangeDb = 20.0;
constexpr double kMostRangeDb = 180.0;
constexpr double kLowestDb = -180.0;
constexpr double kHighestDb = 20.0;
constexpr int kFollowLines = 12;     // half a second between looks
constexpr double kSilentDb = -150.0; // a line without samples, below what a converter can give
constexpr double kLeastStepDb = 4.0; // a range that moves for less would never be still

// The following takes in the noise but for its deepest dips, and the strongest signal.
constexpr double kLowShare = 0.05;
constexpr double kHighShare = 1.0;

constexpr double kKeyDb = 5.0; // that a key moves or widens the range

constexpr int kTickWidth = 60; // of a number of the frequency axis and a space
constexpr int kTickHeight = 26;
constexpr double kNameHeight = 15.0; // of a station's name
constexpr std::size_t kMostNameRows = 6;
} // namespace

PanoramaView::PanoramaView(Radio &radio, VisibleBand &band, SpectrumLines &lines, QWidget *parent)
    : BandWidget(radio, band, parent), m_lines(lines)
{
    say(this, [this] {
        setAccessibleName(tr("Panorama"));
        setAccessibleDescription(tr("Level over frequency. Arrow keys tune, plus and minus zoom."));
    });
    connect(&lines, &SpectrumLines::lineReady, this, [this] {
        if (m_isAutomatic && m_linesToFollow-- <= 0)
            follow();
        m_isLineNew = true;
        update();
    });
}

void PanoramaView::setRange(const LevelRange &range)
{
    const double span = std::clamp(range.highDb - range.lowDb, kLeastRangeDb, kMostRangeDb);
    const double low = std::clamp(range.lowDb, kLowestDb, kHighestDb - span);
    m_isAutomatic = false;
    m_range = {std::round(low), std::round(low + span)};
    emit rangeChanged();
    update();
}

void PanoramaView::setAutomatic(bool automatic)
{
    m_isAutomatic = automatic;
    m_linesToFollow = 0;
    emit rangeChanged();
}

void PanoramaView::setMarks(const std::vector<PictureMark> &marks)
{
    m_marks = marks;
    update();
}

void PanoramaView::setPointer(double hertz)
{
    if (hertz == m_pointerHz)
        return;
    m_pointerHz = hertz;
    update();
}

double PanoramaView::levelAt(double hertz) const
{
    const auto &line = m_lines.line();
    if (line.empty())
        return kNothing;
    const double index = std::round(m_lines.axis().indexOf(hertz, line.size()));
    return index >= 0.0 && index < double(line.size()) ? line[std::size_t(index)] : kNothing;
}

/// Takes the range that holds what is seen now, if it is clearly another one and was so at the last
/// look already: a line that sinks into silence would take the range along.
void PanoramaView::follow()
{
    m_linesToFollow = kFollowLines;
    if (m_columns.empty())
        return;
    const auto differ = [](const LevelRange &a, const LevelRange &b) {
        return std::abs(a.lowDb - b.lowDb) >= kLeastStepDb
            || std::abs(a.highDb - b.highDb) >= kLeastStepDb;
    };
    const LevelRange wanted = LevelRange::holding(m_columns, kLowShare, kHighShare);
    const bool isSteady = !differ(wanted, std::exchange(m_wanted, wanted));
    if (!isSteady || !differ(wanted, m_range) || wanted.highDb <= kSilentDb)
        return;
    m_range = wanted;
    emit rangeChanged();
}

double PanoramaView::yOf(double levelDb) const
{
    const QRect area = plot();
    return area.bottom() + 1 - m_range.heightOf(levelDb) * area.height();
}

/// Draws them anew, but not if only the pointer or a mark has moved, which comes more often than
/// lines do.
void PanoramaView::drawTraces()
{
    const Theme &theme = Theme::current();
    const Look look{pixelsOf(plot().size()), devicePixelRatioF(), band().lowHz(), band().highHz(),
        m_range, m_lines.isPeakHold(), &theme};
    if (!std::exchange(m_isLineNew, false) && look == m_look)
        return;
    const QSize size = look.size;
    if (m_picture.size() != size || look.ratio != m_look.ratio) {
        m_picture = QImage(size, QImage::Format_RGB32);
        m_picture.setDevicePixelRatio(look.ratio);
    }
    m_picture.fill(theme.plot);
    const auto grid = AxisTicks::levels(
        m_range.lowDb, m_range.highDb, std::max(2, plot().height() / kTickHeight));
    for (const auto &tick : grid.ticks) {
        const int y = int((1.0 - m_range.heightOf(tick.value)) * size.height());
        if (y >= 0 && y < size.height())
            std::fill_n(reinterpret_cast<QRgb *>(m_picture.scanLine(y)), size.width(), theme.grid);
    }
    if (look.lowHz != m_look.lowHz || look.highHz != m_look.highHz)
        m_map = {};
    m_look = look;
    const auto &line = m_lines.line();
    if (line.empty() || size.isEmpty())
        return;
    const PictureAxis &axis = m_lines.axis();
    if (m_map.columns() != size.width() || m_map.bins() != line.size()
        || m_mapAxis.centerHz != axis.centerHz || m_mapAxis.spanHz != axis.spanHz) {
        m_mapAxis = axis;
        m_map = {axis, line.size(), look.lowHz, look.highHz, size.width()};
        m_columns.resize(std::size_t(size.width()));
        m_rows.resize(m_columns.size());
    }
    const float top = float(m_range.highDb);
    const float perDb = float(size.height() / (m_range.highDb - m_range.lowDb));
    const auto draw = [&](const std::vector<float> &levels, const TraceRaster::Look &colours) {
        m_map.reduce(levels.data(), m_columns.data(), kNothing);
        for (std::size_t i = 0; i < m_rows.size(); ++i)
            m_rows[i] =
                std::clamp((top - m_columns[i]) * perDb, -4.0f, float(size.height()) + 4.0f);
        m_raster.draw(m_picture, m_rows, colours);
    };
    if (m_lines.isPeakHold() && m_lines.peaks().size() == line.size())
        draw(m_lines.peaks(), {theme.peak, 0, 1.0 * look.ratio});
    draw(line, {theme.trace, theme.area, 1.2 * look.ratio});
}

void PanoramaView::paintEvent(QPaintEvent *)
{
    const Theme &theme = Theme::current();
    drawTraces();
    QPainter painter(this);
    painter.drawImage(plot().topLeft(), m_picture);
    painter.fillRect(QRect(0, 0, kAxisWidth, height()), QColor(theme.window));
    painter.fillRect(
        QRect(kAxisWidth, plot().bottom() + 1, width(), kAxisHeight), QColor(theme.window));
    paintAxes(painter);
    paintBands(painter);
    paintMarks(painter, false);
    paintStations(painter);
    paintPointer(painter);
    if (hasFocus()) {
        painter.setPen(QColor(theme.accent));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(plot().adjusted(0, 0, -1, -1));
    }
}

void PanoramaView::paintAxes(QPainter &painter)
{
    const Theme &theme = Theme::current();
    const QRect area = plot();
    const auto levels =
        AxisTicks::levels(m_range.lowDb, m_range.highDb, std::max(2, area.height() / kTickHeight));
    painter.setPen(QColor(theme.dimText));
    for (const auto &tick : levels.ticks) {
        const double y = std::clamp(yOf(tick.value), area.top() + 7.0, area.bottom() - 6.0);
        painter.drawText(QRectF(0.0, y - 8.0, kAxisWidth - 6.0, 16.0),
            Qt::AlignRight | Qt::AlignVCenter, tick.label);
    }
    painter.drawText(QRectF(0.0, area.bottom() + 3.0, kAxisWidth - 6.0, 16.0),
        Qt::AlignRight | Qt::AlignVCenter, m_isAutomatic ? tr("auto") : tr("dBFS"));
    const auto frequencies = AxisTicks::frequencies(
        band().lowHz(), band().highHz(), std::max(2, area.width() / kTickWidth));
    for (const auto &tick : frequencies.ticks) {
        const double x = xOf(tick.value);
        painter.setPen(QColor(theme.grid));
        painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
        painter.setPen(QColor(theme.axis));
        painter.drawLine(QPointF(x, area.bottom() + 1.0), QPointF(x, area.bottom() + 5.0));
        painter.setPen(QColor(theme.text));
        const QRectF box(x - 60.0, area.bottom() + 4.0, 120.0, 15.0);
        if (x - 30.0 >= area.left() && x + 30.0 <= area.right() - 26.0)
            painter.drawText(box, Qt::AlignCenter, tick.label);
    }
    painter.setPen(QColor(theme.dimText));
    painter.drawText(QRectF(area.right() - 60.0, area.bottom() + 4.0, 58.0, 15.0),
        Qt::AlignRight | Qt::AlignVCenter, frequencies.unit);
}

/// The amateur bands as bars along the axis, each with its name where it has room.
void PanoramaView::paintBands(QPainter &painter)
{
    const Theme &theme = Theme::current();
    const QRect area = plot();
    for (const auto &amateur : radio().functions().listAmatureBands()) {
        const double left = std::max(xOf(double(amateur.low)), double(area.left()));
        const double right = std::min(xOf(double(amateur.high)), area.right() + 1.0);
        if (right - left < 1.0)
            continue;
        const QRectF bar(left, area.bottom() + 20.0, right - left, 12.0);
        painter.fillRect(bar, QColor(theme.band));
        painter.setPen(QColor(theme.isDark ? theme.text : theme.onAccent));
        const QString name = tr("%1 amateur band").arg(amateur.name);
        const bool hasRoom = painter.fontMetrics().horizontalAdvance(name) + 8 < bar.width();
        QFont font = painter.font();
        const QFont before = font;
        font.setPixelSize(10);
        painter.setFont(font);
        if (hasRoom)
            painter.drawText(bar, Qt::AlignCenter, name);
        painter.setFont(before);
    }
}

void PanoramaView::paintStations(QPainter &painter)
{
    const Theme &theme = Theme::current();
    const QRect area = plot();
    painter.setClipRect(area);
    const auto rows =
        std::clamp(std::size_t(area.height() / 2 / kNameHeight), std::size_t(2), kMostNameRows);
    std::vector<double> free(rows); // where each row of names is free from
    QColor ground(theme.plot);
    ground.setAlpha(190);
    std::vector<std::pair<QRectF, QString>> names;
    painter.setPen(QPen(QColor(theme.axis), 1.0, Qt::DotLine));
    for (const PictureMark &mark : m_marks) {
        const double x = xOf(mark.frequencyHz);
        if (x < area.left() || x > area.right())
            continue;
        const double width = painter.fontMetrics().horizontalAdvance(mark.label) + 8.0;
        const auto row =
            std::find_if(free.begin(), free.end(), [x](double end) { return end <= x - 4.0; });
        if (row == free.end())
            continue;
        *row = x + width;
        const double y = area.top() + kNameHeight * (1.4 + double(row - free.begin()));
        painter.drawLine(QPointF(x, y + kNameHeight), QPointF(x, area.bottom()));
        names.push_back({{x - 4.0, y, width - 4.0, kNameHeight - 1.0}, mark.label});
    }
    painter.setPen(QColor(theme.station));
    for (const auto &[box, name] : names) {
        painter.fillRect(box, ground);
        painter.drawText(box, Qt::AlignCenter, name);
    }
    painter.setClipping(false);
}

/// A line at the pointer, and what it points at.
void PanoramaView::paintPointer(QPainter &painter)
{
    if (m_pointerHz < band().lowHz() || m_pointerHz > band().highHz())
        return;
    const Theme &theme = Theme::current();
    const QRect area = plot();
    const double x = xOf(m_pointerHz);
    painter.setPen(QPen(QColor(theme.axis), 1.0, Qt::DashLine));
    painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    const double level = levelAt(m_pointerHz);
    const QString text = tr("%1 MHz  %2 dB")
                             .arg(numberText(m_pointerHz / 1e6, 5),
                                 std::isfinite(level) ? QString::number(level, 'f', 0) : "–");
    const double width = painter.fontMetrics().horizontalAdvance(text) + 12.0;
    const double left = x + 8.0 + width > area.right() ? x - 8.0 - width : x + 8.0;
    const QRectF box(left, area.bottom() - 42.0, width, 18.0);
    QColor ground(theme.window);
    ground.setAlpha(220);
    painter.fillRect(box, ground);
    painter.setPen(QColor(theme.text));
    painter.drawText(box, Qt::AlignCenter, text);
}

bool PanoramaView::isOnLevels(const QPoint &place) const
{
    return place.x() < kAxisWidth && place.y() <= plot().bottom();
}

void PanoramaView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && isOnLevels(event->pos())) {
        m_isOnLevels = true;
        m_levelsPressed = event->pos();
        m_levelsBefore = m_range;
        return;
    }
    BandWidget::mousePressEvent(event);
}

void PanoramaView::mouseMoveEvent(QMouseEvent *event)
{
    if (m_isOnLevels) {
        const double moved = (event->pos().y() - m_levelsPressed.y())
            * (m_levelsBefore.highDb - m_levelsBefore.lowDb) / std::max(1, plot().height());
        setRange({m_levelsBefore.lowDb + moved, m_levelsBefore.highDb + moved});
        return;
    }
    BandWidget::mouseMoveEvent(event);
    if (isOnLevels(event->pos()))
        setCursor(Qt::SizeVerCursor);
}

void PanoramaView::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_isOnLevels)
        m_isOnLevels = false;
    else
        BandWidget::mouseReleaseEvent(event);
}

void PanoramaView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (isOnLevels(event->pos()))
        setAutomatic(true);
    else if (event->pos().y() > plot().bottom())
        band().fit();
}

void PanoramaView::keyPressEvent(QKeyEvent *event)
{
    const int up = event->key() == Qt::Key_Up ? 1 : event->key() == Qt::Key_Down ? -1 : 0;
    if (up == 0 || event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier))
        BandWidget::keyPressEvent(event);
    else if (event->modifiers() & Qt::ShiftModifier)
        setRange({m_range.lowDb, m_range.highDb + up * kKeyDb});
    else
        setRange({m_range.lowDb + up * kKeyDb, m_range.highDb + up * kKeyDb});
}

void PanoramaView::wheelEvent(QWheelEvent *event)
{
    if (!isOnLevels(event->position().toPoint())) {
        BandWidget::wheelEvent(event);
        return;
    }
    // The lower end stays: that is where the noise is.
    const double step = event->angleDelta().y() > 0 ? -5.0 : 5.0;
    setRange({m_range.lowDb, m_range.highDb + step});
    event->accept();
}
} // namespace host
