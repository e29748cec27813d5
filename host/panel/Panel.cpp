// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/Panel.h"

#include "host_interfaces/Common.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace host
{
Panel::Panel(PanelTarget &target) : m_target(target)
{
    connect(&m_input, &PanelInput::presentChanged, this, &Panel::presentChanged);
    connect(&m_input, &PanelInput::problem, this, &Panel::message);
    connect(&m_input, &PanelInput::keyChanged, this, [this](int code, int state) {
        if (const KeyControl *key = m_map.key(code))
            key->change(KeyControl::State(state), m_target);
    });
    connect(&m_input, &PanelInput::knobTurned, this, [this](int code, int clicks, qint64 timeUs) {
        if (KnobControl *knob = m_map.knob(code))
            knob->turn(clicks, timeUs, m_target);
    });
}

QString Panel::defaultPath()
{
    return Common::settingsPath() + "/panel.conf";
}

void Panel::load(const QString &file, QWidget *window)
{
    m_problems.clear();
    m_shortcuts.clear();
    m_map = PanelMap(textOf(file));
    m_problems += m_map.problems();
    if (window)
        m_shortcuts.set(m_map, *window, m_target);
    m_input.setDevice(m_map.device(), m_map.isGrabbing());
}

QString Panel::textOf(const QString &name)
{
    QFile file(name);
    if (!file.exists()) {
        QDir().mkpath(QFileInfo(name).path()); // without a folder the file tells why
        if (!file.open(QIODevice::WriteOnly) || file.write(PanelMap::explanation().toUtf8()) < 0)
            m_problems += name + ": " + file.errorString();
        return {};
    }
    if (!file.open(QIODevice::ReadOnly)) {
        m_problems += name + ": " + file.errorString();
        return {};
    }
    return QString::fromUtf8(file.readAll());
}
} // namespace host
