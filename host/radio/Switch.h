// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/ReceptionMode.h"

#include <QMetaType>
#include <QString>

#include <array>

class DeviceAbstract;
class DeviceManagerAbstract;

namespace host
{
/// Everything of the receiver that is on or off.
enum class Switch {
    Nb1,
    Nb2,
    Nr,
    Anf,
    Apf,
    Dse,
    Binaural,
    Squelch,
    Ctcss,
    Equalizer,
    Stereo,
    Mute,
    AutoPreamp,
    Rit,
};
constexpr int kSwitches = int(Switch::Rit) + 1;

/// A switch: its names, where it has an effect, what it does.
struct SwitchRow
{
    Switch id;
    const char *key;  ///< in the settings and for remote control, lower case
    const char *name; ///< short, for a button; to be translated in the context "Switch"
    const char *help; ///< a sentence, likewise
    ModeSet modes;    ///< in others the signal does not go through it
    bool standard;

    /// Hands it to the device; null for those that Radio sees to by itself.
    void (*apply)(DeviceAbstract &, DeviceManagerAbstract &, bool);
};

/// All switches, by their number.
const std::array<SwitchRow, kSwitches> &switchTable();
inline const SwitchRow &rowOf(Switch id)
{
    return switchTable()[std::size_t(id)];
}

/// In the user's language.
QString nameOf(Switch id);
QString helpOf(Switch id);
} // namespace host

Q_DECLARE_METATYPE(host::Switch)
