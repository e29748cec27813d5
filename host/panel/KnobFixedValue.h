// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "panel/KnobValue.h"

namespace host
{
/// The same number of steps for each click, however fast they come.
class KnobFixedValue : public KnobValue
{
public:
    /// Below 0 the knob goes the other way.
    explicit KnobFixedValue(int stepsPerClick) : m_stepsPerClick(stepsPerClick) { }

    int steps(int clicks, qint64) override { return clicks * m_stepsPerClick; }

private:
    int m_stepsPerClick;
};
} // namespace host
