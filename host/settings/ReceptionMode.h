// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <QString>
#include <QStringList>

#include <initializer_list>

namespace host
{
using Mode = DeviceFunctionsAbstract::Mode;

/// A mode that can be asked for, and what belongs to it as long as nothing else is said. Filter
/// edges are hertz relative to the tuned frequency and keep their sign: a lower side band lies
/// below 0. In DIGL and DIGU the receiver first moves the tuned frequency to an audio pitch, and
/// the edges are those of the audio. How far the edges may go is the device's to say.
struct ReceptionMode
{
    const char *name;
    Mode mode;
    double filterLowHz;
    double filterHighHz;
    double builtinHz; ///< a station of the virtual receiver's built-in band for this mode
};

/// The mode of that name in upper or lower case, null for an unknown one.
const ReceptionMode *findMode(const QString &name);

/// Null for a mode that cannot be asked for.
const ReceptionMode *findMode(Mode mode);

QStringList modeNames();

/// Name and filter of all modes, a line each, for the help.
QString modeHelp();

/// Some of the modes.
class ModeSet
{
public:
    constexpr ModeSet(std::initializer_list<Mode> modes)
    {
        for (const Mode mode : modes)
            m_bits |= 1u << mode;
    }
    static constexpr ModeSet every() { return ModeSet(~0u); }
    static constexpr ModeSet but(const ModeSet &others) { return ModeSet(~others.m_bits); }

    constexpr bool has(Mode mode) const { return (m_bits >> mode & 1u) != 0; }

    /// "LSB, USB".
    QString names() const;

    /// " Only in LSB, USB." or " Not in WFM.", whichever is shorter; empty for every mode.
    QString remark() const;

private:
    explicit constexpr ModeSet(unsigned bits) : m_bits(bits) { }

    unsigned m_bits = 0; // one for each number of DeviceFunctionsAbstract::Mode
};
} // namespace host
