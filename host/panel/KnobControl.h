// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "panel/KnobValue.h"
#include "panel/PanelAction.h"

#include <memory>

namespace host
{
/// A knob of the panel, what it moves and how far. GUI thread.
class KnobControl
{
public:
    /// An action that can be turned; it is a row of the table, which outlives the control.
    KnobControl(const PanelAction &action, std::unique_ptr<KnobValue> value);

    /// By so many clicks, see KnobValue.
    void turn(int clicks, qint64 timeUs, PanelTarget &target);

private:
    const PanelAction &m_action;
    std::unique_ptr<KnobValue> m_value;
};
} // namespace host
