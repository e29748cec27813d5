// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "radio/Vfo.h"

#include <QByteArray>

#include <optional>

namespace host
{
/// The VFOs by the names that rig control has for them.
namespace rigvfo
{
inline QByteArray nameOf(VfoId id)
{
    return id == VfoId::A ? "VFOA" : "VFOB";
}

inline QByteArray names()
{
    return "VFOA VFOB currVFO";
}

/// "currVFO" and "VFO" are the active one, "Main" and "Sub" the receivers of a radio with two.
inline std::optional<VfoId> find(const QByteArray &name, VfoId active)
{
    if (name == "VFOA" || name == "Main")
        return VfoId::A;
    if (name == "VFOB" || name == "Sub")
        return VfoId::B;
    if (name == "currVFO" || name == "VFO")
        return active;
    return std::nullopt;
}
} // namespace rigvfo
} // namespace host
