// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

namespace DspCore
{
/// Time constants of the gain control as one change, so that they take effect together.
struct AgcParam
{
    double attack = 1.0;  // ms
    double decay = 600.0; // ms
    quint32 hang = 600;   // ms
    bool on = true;       // false: fixed gain
};
} // namespace DspCore
