// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace host
{
/// A line of a mapping in words: a key or knob and what it does.
struct PanelRow
{
    enum class Kind {
        Key,      ///< of the device
        Knob,     ///< of the device
        Shortcut, ///< of the window
        Turn,     ///< two shortcuts of the window as a knob
    };

    Kind kind = Kind::Key;
    QString control;  ///< KEY_MUTE, REL_DIAL, Ctrl+M, or "Alt+Up Alt+Down"
    QString action;   ///< a name of PanelAction::table()
    QString argument; ///< of the action; of a knob how far it goes, see PanelMap::explanation()

    bool isKnob() const { return kind == Kind::Knob || kind == Kind::Turn; }
    bool operator==(const PanelRow &other) const = default;
};
} // namespace host
