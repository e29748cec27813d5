// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rig/RigTarget.h"

#include <QByteArray>

#include <array>
#include <cstdint>

namespace host
{
/// A level that clients read or set: its name and bit in hamlib's masks, and what it is here.
struct RigLevel
{
    const char *name;
    std::uint64_t bit;
    bool isFraction; ///< 0 to 1, else a whole number
    std::optional<double> (*get)(const RigTarget &, VfoId);
    RigError (*set)(RigTarget &, double); ///< null for a meter

    /// Null for an unknown name.
    static const RigLevel *find(const QByteArray &name);

    static const std::array<RigLevel, 7> &table();

    /// The value as clients expect it.
    QByteArray text(double value) const;
};
} // namespace host
