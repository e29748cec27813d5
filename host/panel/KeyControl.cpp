// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/KeyControl.h"

namespace host
{
void KeyControl::change(State state, PanelTarget &target) const
{
    if (state == Pressed || (state == Held && isRepeating()))
        m_action.press(target, m_argument);
}
} // namespace host
