// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "radio/Vfo.h"

#include <QWidget>

#include <optional>

namespace host
{
class Radio;
class VisibleBand;

/// A view of the band with frequency to the right: what the mouse and the keys do to the radio is
/// the same in panorama and waterfall.
///
/// Click tunes to a multiple of the step, with Shift to the very place. The wheel tunes by the
/// step, with Shift by ten of them, with Ctrl it zooms about the pointer. Drag moves the view, and
/// of filter edges, VFOs and notches what it takes hold of. Right click sets a notch or takes it
/// out. Left and right arrow tune, plus and minus zoom, Home shows all, Insert and Delete set and
/// take out a notch at the active VFO. GUI thread.
class BandWidget : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kAxisWidth = 46; ///< for the numbers to the left of the plot

    BandWidget(Radio &radio, VisibleBand &band, QWidget *parent = nullptr);

    /// The part of the widget that shows the band.
    virtual QRect plot() const { return rect().adjusted(kAxisWidth, 0, 0, 0); }

    double xOf(double hertz) const;
    double hertzAt(double x) const;

signals:
    /// The pointer is over that frequency; leaves with a negative number.
    void pointed(double hertz);

protected:
    Radio &radio() const { return m_radio; }
    VisibleBand &band() const { return m_band; }

    /// Of the screen, so many that the size is covered whatever the scale.
    QSize pixelsOf(const QSize &size) const;

    /// Filter, VFOs and notches. The waterfall draws them thin, so that it stays to be seen.
    void paintMarks(QPainter &painter, bool isThin) const;

    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    enum class Handle { None, LowEdge, HighEdge, Vfo, OtherVfo, Notch };

    struct Grip
    {
        Handle handle = Handle::None;
        std::size_t notch = 0;
    };

    Grip gripAt(const QPoint &place) const;
    void drag(const QPoint &place);
    void toggleNotch(double hertz);
    double rounded(double hertz) const;
    void paintFilter(QPainter &painter, VfoId id, bool isThin) const;
    void paintNotches(QPainter &painter, bool isThin) const;

    Radio &m_radio;
    VisibleBand &m_band;
    Grip m_grip;
    QPoint m_pressed;
    double m_lastX = 0.0;
    bool m_isPressed = false;
    bool m_isDragging = false;
    int m_wheel = 0; // eighths of a degree that make no step yet
};
} // namespace host
