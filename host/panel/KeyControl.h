// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "panel/PanelAction.h"

namespace host
{
/// A key of the panel and what it does. GUI thread.
class KeyControl
{
public:
    /// What a panel tells of a key; the numbers are those of the system's input events.
    enum State { Released = 0, Pressed = 1, Held = 2 };

    /// The action accepts the argument; it is a row of the table, which outlives the control.
    KeyControl(const PanelAction &action, const QString &argument)
        : m_action(action), m_argument(argument)
    { }

    /// Acts when pressed, and again and again while held where that makes sense.
    void change(State state, PanelTarget &target) const;

    /// Whether it acts while held.
    bool isRepeating() const { return m_action.isRepeated; }

private:
    const PanelAction &m_action;
    QString m_argument;
};
} // namespace host
