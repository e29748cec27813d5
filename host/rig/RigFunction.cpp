// SPDX-License-Identifier: GPL-3.0-or-later
#include "rig/RigFunction.h"

#include <algorithm>

namespace host
{
namespace
{
template <Switch id>
constexpr RigFunction row(const char *name, int bit)
{
    return {name, std::uint64_t(1) << bit, [](const RigTarget &target) { return target.isOn(id); },
        [](RigTarget &target, bool on) { return target.setOn(id, on); }};
}
} // namespace

const std::array<RigFunction, 11> &RigFunction::table()
{
    // Bits: RIG_FUNC_... of hamlib's rig.h.
    static constexpr std::array<RigFunction, 11> kTable{{
        row<Switch::Nb1>("NB", 1),
        row<Switch::Ctcss>("TSQL", 5),
        row<Switch::Anf>("ANF", 8),
        row<Switch::Nr>("NR", 9),
        row<Switch::Apf>("APF", 11),
        {"LOCK", 1u << 16, [](const RigTarget &target) { return target.isLocked(); },
            [](RigTarget &target, bool on) { return target.setLocked(on); }},
        row<Switch::Mute>("MUTE", 17),
        row<Switch::Squelch>("SQL", 20),
        row<Switch::Rit>("RIT", 24),
        row<Switch::Nb2>("NB2", 32),
        {"DUAL_WATCH", std::uint64_t(1) << 37,
            [](const RigTarget &target) { return std::optional(target.isSplit()); },
            [](RigTarget &target, bool on) { return target.setSplit(on); }},
    }};
    return kTable;
}

const RigFunction *RigFunction::find(const QByteArray &name)
{
    const auto isNamed = [&name](const RigFunction &function) { return name == function.name; };
    const auto function = std::find_if(table().begin(), table().end(), isNamed);
    return function == table().end() ? nullptr : &*function;
}
} // namespace host
