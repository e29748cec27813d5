// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/ControlPanel.h"

namespace host
{
ControlPanel::ControlPanel(Radio &radio, RadioMemory &memory)
    : m_target(radio, memory, m_sender), m_panel(m_target)
{
    connect(&m_target, &RadioPanel::message, this, &ControlPanel::message);
    connect(&m_panel, &Panel::message, this, &ControlPanel::message);
    connect(&m_panel, &Panel::presentChanged, this, [this](bool isPresent) {
        emit message(
            isPresent ? tr("The control panel is there.") : tr("The control panel is gone."));
    });
}

void ControlPanel::load(const QString &file, QWidget *window)
{
    m_panel.load(file, window);
    for (const QString &problem : m_panel.problems())
        emit message(tr("Control panel: %1").arg(problem));
}
} // namespace host
