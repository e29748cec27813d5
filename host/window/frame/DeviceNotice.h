// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;
class QToolButton;

namespace host
{
class Radio;

/// A strip above the pictures that is there while no receiver is: why, what to do about it, and a
/// way to listen without hardware. GUI thread.
class DeviceNotice : public QWidget
{
    Q_OBJECT

public:
    /// The radio outlives the strip.
    explicit DeviceNotice(Radio &radio, QWidget *parent = nullptr);

private:
    void showText();

    Radio &m_radio;
    QLabel *m_text;
    QToolButton *m_virtual;
};
} // namespace host
