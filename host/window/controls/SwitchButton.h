// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "radio/Switch.h"

#include <QToolButton>

namespace host
{
class Radio;

/// A switch of the radio as a button that stays down while it is on. Grey where it has no effect.
/// GUI thread.
class SwitchButton : public QToolButton
{
    Q_OBJECT

public:
    SwitchButton(Radio &radio, Switch id, QWidget *parent = nullptr);

private:
    void enable();

    Radio &m_radio;
    const Switch m_id;
};
} // namespace host
