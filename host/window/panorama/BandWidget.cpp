// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/panorama/BandWidget.h"

#include "window/frame/Theme.h"
#include "window/panorama/VisibleBand.h"

#include "radio/Radio.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
constexpr int kGripPixels = 5;
constexpr int kWheelStep = 120; // eighths of a degree, a notch of common mice
constexpr int kFastSteps = 10;
constexpr double kZoomStep = 0.8;
constexpr double kNotchWidthHz = 200.0; // a whistle that drifts a little
} // namespace

BandWidget::BandWidget(Radio &radio, VisibleBand &band, QWidget *parent)
    : QWidget(parent), m_radio(radio), m_band(band)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    const auto redraw = [this] { update(); };
    connect(&band, &VisibleBand::changed, this, redraw);
    connect(&radio, &Radio::frequencyChanged, this, redraw);
    connect(&radio, &Radio::activeChanged, this, redraw);
    connect(&radio, &Radio::filterChanged, this, redraw);
    connect(&radio, &Radio::splitChanged, this, redraw);
    connect(&radio, &Radio::notchesChanged, this, redraw);
    connect(&radio, &Radio::centerChanged, this, redraw);
}

double BandWidget::xOf(double hertz) const
{
    const QRect area = plot();
    return area.left() + (hertz - m_band.lowHz()) / m_band.spanHz() * area.width();
}

double BandWidget::hertzAt(double x) const
{
    const QRect area = plot();
    return m_band.lowHz() + (x - area.left()) / std::max(1, area.width()) * m_band.spanHz();
}

QSize BandWidget::pixelsOf(const QSize &size) const
{
    const double ratio = devicePixelRatioF();
    return {int(std::ceil(size.width() * ratio)), int(std::ceil(size.height() * ratio))};
}

double BandWidget::rounded(double hertz) const
{
    // Not coarser than what a hand can aim at.
    const double step = m_radio.step();
    return std::round(hertz / step) * step;
}

BandWidget::Grip BandWidget::gripAt(const QPoint &place) const
{
    const auto isNear = [&](double hertz) {
        return std::abs(xOf(hertz) - place.x()) <= kGripPixels;
    };
    const auto [low, high] = m_radio.filterOnAir();
    const double tuned = m_radio.receivedHz();
    const bool isWide = xOf(tuned + high) - xOf(tuned + low) > 4 * kGripPixels;
    if (isWide && isNear(tuned + low))
        return {Handle::LowEdge, 0};
    if (isWide && isNear(tuned + high))
        return {Handle::HighEdge, 0};
    const std::size_t notchBand = m_radio.notchBand();
    for (std::size_t id = 0; id < m_radio.notches().filterCount(); ++id) {
        const auto notch = m_radio.notches().filter(notchBand, id);
        if (notch.enable && isNear(notch.freq))
            return {Handle::Notch, id};
    }
    if (isNear(m_radio.frequencyHz()))
        return {Handle::Vfo, 0};
    if (isNear(m_radio.vfo(other(m_radio.active())).frequencyHz))
        return {Handle::OtherVfo, 0};
    return {};
}

void BandWidget::mousePressEvent(QMouseEvent *event)
{
    const QPoint place = event->pos();
    if (!plot().contains(place)) {
        QWidget::mousePressEvent(event);
        return;
    }
    if (event->button() == Qt::RightButton) {
        toggleNotch(hertzAt(place.x()));
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    m_isPressed = true;
    m_isDragging = false;
    m_pressed = place;
    m_lastX = place.x();
    m_grip = gripAt(place);
}

void BandWidget::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint place = event->pos();
    if (m_isPressed) {
        // A hand is never quite still.
        if (!m_isDragging && std::abs(place.x() - m_pressed.x()) > kGripPixels)
            m_isDragging = true;
        if (m_isDragging)
            drag(place);
    } else {
        const Handle handle = plot().contains(place) ? gripAt(place).handle : Handle::None;
        setCursor(handle != Handle::None ? Qt::SizeHorCursor
                : plot().contains(place) ? Qt::CrossCursor
                                         : Qt::ArrowCursor);
    }
    emit pointed(plot().contains(place) ? hertzAt(place.x()) : -1.0);
}

void BandWidget::drag(const QPoint &place)
{
    const double hertz = hertzAt(place.x());
    const double tuned = m_radio.receivedHz();
    // Of edges in the audio of digital modes the drag changes them by as much as on the air.
    const double shift = m_radio.filterEdges().lowHz - m_radio.filterOnAir().lowHz;
    switch (m_grip.handle) {
    case Handle::LowEdge:
        m_radio.moveFilterLow(hertz - tuned + shift);
        break;
    case Handle::HighEdge:
        m_radio.moveFilterHigh(hertz - tuned + shift);
        break;
    case Handle::Vfo:
        m_radio.setFrequency(rounded(hertz));
        break;
    case Handle::OtherVfo:
        m_radio.setFrequency(other(m_radio.active()), rounded(hertz));
        break;
    case Handle::Notch: {
        auto notch = m_radio.notches().filter(m_radio.notchBand(), m_grip.notch);
        notch.freq = std::round(hertz);
        m_radio.notches().setFilter(m_radio.notchBand(), m_grip.notch, notch);
        break;
    }
    case Handle::None:
        m_band.pan((m_lastX - place.x()) / std::max(1, plot().width()) * m_band.spanHz());
        break;
    }
    m_lastX = place.x();
}

void BandWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_isPressed)
        return;
    m_isPressed = false;
    if (m_isDragging)
        return;
    const double hertz = hertzAt(event->pos().x());
    m_radio.setFrequency(
        event->modifiers() & Qt::ShiftModifier ? std::round(hertz) : rounded(hertz));
}

void BandWidget::wheelEvent(QWheelEvent *event)
{
    m_wheel += event->angleDelta().y() != 0 ? event->angleDelta().y() : event->angleDelta().x();
    const int steps = m_wheel / kWheelStep;
    m_wheel -= steps * kWheelStep;
    event->accept();
    if (steps == 0)
        return;
    if (event->modifiers() & Qt::ControlModifier)
        m_band.zoom(std::pow(kZoomStep, steps), hertzAt(event->position().x()));
    else
        m_radio.tune(event->modifiers() & Qt::ShiftModifier ? steps * kFastSteps : steps);
}

void BandWidget::keyPressEvent(QKeyEvent *event)
{
    const int steps = event->modifiers() & Qt::ShiftModifier ? kFastSteps : 1;
    switch (event->key()) {
    case Qt::Key_Left:
        m_radio.tune(-steps);
        break;
    case Qt::Key_Right:
        m_radio.tune(steps);
        break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        m_band.zoom(kZoomStep, m_radio.frequencyHz());
        break;
    case Qt::Key_Minus:
        m_band.zoom(1.0 / kZoomStep, m_radio.frequencyHz());
        break;
    case Qt::Key_Home:
        m_band.fit();
        break;
    case Qt::Key_Insert:
        m_radio.addNotch(m_radio.receivedHz(), kNotchWidthHz);
        break;
    case Qt::Key_Delete:
        toggleNotch(m_radio.receivedHz());
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void BandWidget::leaveEvent(QEvent *)
{
    emit pointed(-1.0);
}

void BandWidget::toggleNotch(double hertz)
{
    const Grip grip = gripAt({int(std::lround(xOf(hertz))), plot().center().y()});
    if (grip.handle == Handle::Notch)
        m_radio.removeNotch(grip.notch);
    else if (!m_radio.addNotch(std::round(hertz), kNotchWidthHz))
        emit m_radio.message(tr("All %n notch filters of this band are in use.", "",
            int(m_radio.notches().filterCount())));
}

void BandWidget::paintFilter(QPainter &painter, VfoId id, bool isThin) const
{
    const Theme &theme = Theme::current();
    const QRect area = plot();
    const bool isActive = id == m_radio.active();
    const double tuned = isActive ? m_radio.receivedHz() : m_radio.vfo(id).frequencyHz;
    const auto [low, high] = m_radio.filterOnAir();
    const QColor colour(isActive ? theme.carrier : theme.other);
    const double left = xOf(tuned + low);
    const QRectF pass(left, area.top(), std::max(1.0, xOf(tuned + high) - left), area.height());
    if (!isThin && (isActive || m_radio.isOtherHeard()))
        painter.fillRect(pass.intersected(area), QColor::fromRgba(theme.filter));
    painter.setPen(QPen(colour, 1.0, Qt::DotLine));
    if (isActive && pass.width() > 4)
        for (const double x : {pass.left(), pass.right()})
            painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    const double carrier = xOf(m_radio.vfo(id).frequencyHz);
    painter.setPen(QPen(colour, isActive ? 1.6 : 1.0));
    painter.drawLine(QPointF(carrier, area.top()), QPointF(carrier, area.bottom()));
    if (isThin)
        return;
    // The letter tells which of the two it is.
    const QString name = id == VfoId::A ? "A" : "B";
    const QRectF box(carrier + 2.0, area.top() + 2.0, 14.0, 15.0);
    painter.fillRect(box, colour);
    painter.setPen(QColor(theme.plot));
    painter.drawText(box, Qt::AlignCenter, name);
}

void BandWidget::paintNotches(QPainter &painter, bool isThin) const
{
    const Theme &theme = Theme::current();
    const QRect area = plot();
    const std::size_t notchBand = m_radio.notchBand();
    for (std::size_t id = 0; id < m_radio.notches().filterCount(); ++id) {
        const auto notch = m_radio.notches().filter(notchBand, id);
        const double x = xOf(notch.freq);
        if (!notch.enable || x < area.left() || x > area.right())
            continue;
        const double half = std::max(1.5, (xOf(notch.freq + notch.width / 2.0) - x));
        // One that is out of action has no strip, and a name in brackets.
        const bool isOn = m_radio.notches().bandEnabled(notchBand);
        const QColor colour(isOn ? theme.notch : theme.axis);
        QColor wash = colour;
        wash.setAlpha(isThin ? 60 : 90);
        if (isOn)
            painter.fillRect(QRectF(x - half, area.top(), 2.0 * half, area.height()), wash);
        painter.setPen(QPen(colour, 1.0, Qt::DashLine));
        painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
        if (isThin)
            continue;
        const QString name = QString(isOn ? "N%1" : "(N%1)").arg(id + 1);
        const QRectF box(x - (isOn ? 8.0 : 13.0), area.bottom() - 18.0, isOn ? 16.0 : 26.0, 15.0);
        painter.fillRect(box, colour);
        painter.setPen(QColor(theme.plot));
        painter.drawText(box, Qt::AlignCenter, name);
    }
}

void BandWidget::paintMarks(QPainter &painter, bool isThin) const
{
    painter.save();
    painter.setClipRect(plot());
    paintNotches(painter, isThin);
    const VfoId active = m_radio.active();
    paintFilter(painter, other(active), isThin);
    paintFilter(painter, active, isThin);
    painter.restore();
}
} // namespace host
