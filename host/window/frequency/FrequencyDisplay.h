// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "radio/Vfo.h"

#include <QWidget>

class QLineEdit;

namespace host
{
class Radio;

/// The frequency of a VFO, a digit for each power of ten from 100 MHz down to 1 Hz.
///
/// Each digit takes the wheel, a click on its upper half to count up and on its lower half to count
/// down. With the keyboard the left and right arrow choose a digit, up and down count, numbers
/// write over it and go on; Return and F let a whole frequency be typed. A click on the letter
/// makes the VFO the active one. GUI thread.
class FrequencyDisplay : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kDigits = 9;

    FrequencyDisplay(Radio &radio, VfoId id, QWidget *parent = nullptr);

    // What is shown, and what can be: of the radio.
    double hertz() const;
    double lowestHz() const;
    double highestHz() const;
    void setHertz(double hertz);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// Opens the field for a whole frequency.
    void edit();

    /// The chosen digit: 0 is 1 Hz.
    int digit() const { return m_digit; }

    /// Where a digit is drawn.
    QRectF rectOf(int digit) const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    bool isActive() const;
    int digitAt(const QPointF &place) const;
    void count(int digit, int by);
    void write(int number);
    void choose(int digit);
    void finishEdit(bool take);
    void tell();
    double digitWidth() const;

    Radio &m_radio;
    const VfoId m_id;
    int m_digit = 3;
    int m_hovered = -1;
    int m_wheel = 0;
    QLineEdit *m_field; // a child
};
} // namespace host
