// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/Panel.h"

#include "host_interfaces/Common.h"
#include "vm_library/source/file/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QWidget>

#include <libevdev/libevdev.h>

namespace host
{
Panel::Panel(PanelTarget &target) : m_target(target)
{
    connect(&m_input, &PanelInput::presentChanged, this, &Panel::presentChanged);
    connect(&m_input, &PanelInput::problem, this, &Panel::message);
    connect(&m_input, &PanelInput::keyChanged, this, [this](int code, int state) {
        if (m_isLearning)
            return state == KeyControl::Pressed ? tellUse(EV_KEY, code) : void();
        if (const KeyControl *key = m_map.key(code))
            key->change(KeyControl::State(state), m_target);
    });
    connect(&m_input, &PanelInput::knobTurned, this, [this](int code, int clicks, qint64 timeUs) {
        if (m_isLearning)
            return tellUse(EV_REL, code);
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
    m_file = file;
    m_window = window;
    m_problems.clear();
    m_shortcuts.clear();
    begin();
    m_map = PanelMap(text());
    m_problems += m_map.problems();
    if (window)
        m_shortcuts.set(m_map, *window, m_target);
    m_input.setDevice(m_map.device(), m_map.isGrabbing());
}

/// A file that can be read: one that is not there is made.
void Panel::begin()
{
    QFile file(m_file);
    if (file.exists()) {
        if (!file.open(QIODevice::ReadOnly))
            m_problems += m_file + ": " + file.errorString();
        return;
    }
    QDir().mkpath(QFileInfo(m_file).path()); // without a folder the file tells why
    if (QString error; !vm::file::writeWhole(m_file, PanelMap::explanation().toUtf8(), &error))
        m_problems += error;
}

QString Panel::text() const
{
    QFile file(m_file);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool Panel::save(const QString &text)
{
    if (!vm::file::writeWhole(m_file, text.toUtf8(), &m_error))
        return false;
    load(m_file, m_window);
    return true;
}

void Panel::tellUse(unsigned type, int code)
{
    if (const char *name = libevdev_event_code_get_name(type, unsigned(code)))
        emit used(type == EV_REL, name);
}
} // namespace host
