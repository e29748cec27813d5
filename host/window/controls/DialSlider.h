// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "radio/Dial.h"

#include <QWidget>

class QLabel;
class QSlider;

namespace host
{
class Radio;

/// A dial of the radio as a slider with its name and its value. A double click on the value and
/// Backspace set it back to its standard. Grey where it has no effect. GUI thread.
class DialSlider : public QWidget
{
    Q_OBJECT

public:
    DialSlider(Radio &radio, Dial id, QWidget *parent = nullptr);

    QSlider &slider() { return *m_slider; }

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void show(double value);
    void enable();

    Radio &m_radio;
    const Dial m_id;
    QSlider *m_slider; // children
    QLabel *m_value;
};
} // namespace host
