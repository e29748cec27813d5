// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rig/RigTarget.h"

#include <QByteArray>

namespace host
{
/// What a receiver can do, in the lines by which hamlib's network clients set themselves up
/// (version 1 of their protocol), without the last line break.
QByteArray rigState(const RigTarget &target);

/// The same for people, "Name: value" in each line.
QByteArray rigCapabilities(const RigTarget &target);
} // namespace host
