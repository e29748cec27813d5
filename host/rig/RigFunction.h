// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rig/RigTarget.h"

#include <QByteArray>

#include <array>
#include <cstdint>

namespace host
{
/// Something that clients switch on and off: its name and bit in hamlib's masks, and what it is
/// here.
struct RigFunction
{
    const char *name;
    std::uint64_t bit;
    std::optional<bool> (*get)(const RigTarget &);
    RigError (*set)(RigTarget &, bool);

    /// Null for an unknown name.
    static const RigFunction *find(const QByteArray &name);

    static const std::array<RigFunction, 11> &table();
};
} // namespace host
