// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/ReceiverControls.h"
#include "settings/HostSettings.h"

#include <QString>

namespace host
{
/// Sets the virtual receiver up before it is opened: its scene, its EEPROM and its faults. Of real
/// hardware the scene is what is on the air.
class SceneSetup
{
public:
    /// receiver is null for real hardware, else it must outlive the scene.
    explicit SceneSetup(const ReceiverControls *receiver) : m_receiver(receiver) { }

    /// False if a file or a fault is not understood, or if something is asked for that only the
    /// virtual receiver has; error() tells which and why, in one line.
    bool open(const HostSettings &settings);

    /// Length in seconds, 0 if it never ends.
    double seconds() const;

    /// For the report: the file, "built-in" or "on the air".
    const QString &name() const { return m_name; }
    const QString &error() const { return m_error; }

    /// What was not as it should be in a recording that is played all the same; empty if nothing
    /// was.
    const QString &notice() const { return m_notice; }

private:
    bool checkHardware(const HostSettings &settings);
    bool choose(const HostSettings &settings);
    bool choosePlayed(const HostSettings &settings, const QByteArray &path, double rateHz);
    bool isGood(int result, const QString &subject);

    const ReceiverControls *m_receiver;
    QString m_name;
    QString m_error;
    QString m_notice;
};
} // namespace host
