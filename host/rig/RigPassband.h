// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/ReceptionMode.h"

namespace host
{
/// Edges of a filter in hertz from the carrier.
struct RigPassband
{
    double lowHz;
    double highHz;
};

/// What a filter becomes when a client asks for a width: 0 is the usual one of the mode. The edge
/// next to the carrier stays, of a filter around it both edges move.
RigPassband rigPassband(
    DeviceFunctionsAbstract &functions, Mode mode, RigPassband present, double hertz);
} // namespace host
