// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/ReceptionMode.h"

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace host
{
/// The modes of the receiver by the names that rig control has for them.
namespace rigmode
{
/// "PKTUSB" for DIGU.
QByteArray nameOf(Mode mode);

/// Also of names that stand for nearly the same, as those of radio teletype and reversed
/// telegraphy.
std::optional<Mode> find(const QByteArray &name);

/// The names of all modes, each once, separated by blanks.
QByteArray names();

/// The mode's bit in hamlib's masks; 0 for one that hamlib has no number for.
std::uint32_t bit(Mode mode);
std::uint32_t allBits();
} // namespace rigmode
} // namespace host
