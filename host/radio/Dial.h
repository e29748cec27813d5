// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/ReceptionMode.h"

#include <QMetaType>
#include <QString>

#include <array>

class DeviceAbstract;

namespace host
{
/// Everything of the receiver that is a number, but for frequencies and filters.
enum class Dial {
    Volume,
    VolumeA,
    VolumeB,
    Balance,
    AgcGain,
    Squelch,
    CtcssTone,
    Preamp,
    Rit,
};
constexpr int kDials = int(Dial::Rit) + 1;

/// A dial: its names, what it can be set to, what it does. Values are multiples of the step.
struct DialRow
{
    Dial id;
    const char *key;  ///< in the settings and for remote control, lower case
    const char *name; ///< to be translated in the context "Dial"
    const char *help; ///< a sentence, likewise
    const char *unit; ///< "dB", "dBm", "Hz", or empty
    double low;       ///< of Preamp all three are the device's, see Radio::rangeOf()
    double high;
    double step;
    double standard;
    ModeSet modes; ///< in others it has no effect

    /// Hands it to the device; null for those that Radio sees to by itself.
    void (*apply)(DeviceAbstract &, double);
};

/// All dials, by their number.
const std::array<DialRow, kDials> &dialTable();
inline const DialRow &rowOf(Dial id)
{
    return dialTable()[std::size_t(id)];
}

/// In the user's language.
QString nameOf(Dial id);
QString helpOf(Dial id);
} // namespace host

Q_DECLARE_METATYPE(host::Dial)
