// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/KnobControl.h"

namespace host
{
KnobControl::KnobControl(const PanelAction &action, std::unique_ptr<KnobValue> value)
    : m_action(action), m_value(std::move(value))
{ }

void KnobControl::turn(int clicks, qint64 timeUs, PanelTarget &target)
{
    if (const int steps = m_value->steps(clicks, timeUs))
        m_action.turn(target, steps);
}
} // namespace host
