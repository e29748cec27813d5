// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "HostSettings.h"

#include <QString>

namespace host
{
/// Sets the virtual receiver up before it is opened: its scene, its EEPROM and its faults.
class Scene
{
public:
    /// False if a file or a fault is not understood; error() tells which and why, in one line.
    bool open(const HostSettings &settings);

    /// Length in seconds, 0 if it never ends.
    double seconds() const;

    /// For the report: the file or "built-in".
    const QString &name() const { return m_name; }
    const QString &error() const { return m_error; }

private:
    bool choose(const HostSettings &settings);
    bool isGood(int result, const QString &subject);

    QString m_name;
    QString m_error;
};
} // namespace host
