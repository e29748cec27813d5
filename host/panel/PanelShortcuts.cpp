// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/PanelShortcuts.h"

#include "panel/PanelMap.h"

namespace host
{
PanelShortcuts::PanelShortcuts()
{
    m_clock.start();
}

PanelShortcuts::~PanelShortcuts()
{
    clear();
}

void PanelShortcuts::set(const PanelMap &map, QWidget &window, PanelTarget &target)
{
    clear();
    const auto add = [&](const QKeySequence &keys, bool isRepeating, auto action) {
        m_shortcuts.push_back(new QShortcut(keys, &window));
        m_shortcuts.back()->setAutoRepeat(isRepeating);
        QObject::connect(m_shortcuts.back().data(), &QShortcut::activated, &window, action);
    };
    for (const PanelMap::Shortcut &shortcut : map.shortcuts())
        add(shortcut.keys, shortcut.key->isRepeating(),
            [key = shortcut.key, &target] { key->change(KeyControl::Pressed, target); });
    for (const PanelMap::ShortcutKnob &pair : map.shortcutKnobs()) {
        const auto turn = [this, knob = pair.knob, &target](int clicks) {
            knob->turn(clicks, m_clock.nsecsElapsed() / 1000, target);
        };
        add(pair.up, true, [turn] { turn(1); });
        add(pair.down, true, [turn] { turn(-1); });
    }
}

void PanelShortcuts::clear()
{
    for (const QPointer<QShortcut> &shortcut : m_shortcuts)
        delete shortcut.data();
    m_shortcuts.clear();
}
} // namespace host
