// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "panel/Panel.h"
#include "panel/RadioPanel.h"
#include "panel/SenderKeyToSystemLinux.h"

namespace host
{
/// The control panel of the radio, put together: its input, its mapping, what it acts on and the
/// desktop that keystrokes go to. GUI thread.
class ControlPanel : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive the panel.
    ControlPanel(Radio &radio, RadioMemory &memory);

    /// See Panel::load(). What is wrong with the mapping is told by message(), a line each.
    void load(const QString &file, QWidget *window);

    /// To be edited.
    Panel &panel() { return m_panel; }

signals:
    /// Something a person should read, in one line.
    void message(const QString &text);

private:
    SenderKeyToSystemLinux m_sender;
    RadioPanel m_target;
    Panel m_panel;
};
} // namespace host
