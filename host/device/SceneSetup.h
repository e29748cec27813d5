// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/ReceiverControls.h"
#include "settings/HostSettings.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

namespace host
{
/// Sets the virtual receiver up before it is opened: its scene, its EEPROM and its faults. Of real
/// hardware the scene is what is on the air.
class SceneSetup
{
    Q_DECLARE_TR_FUNCTIONS(SceneSetup)

public:
    /// receiver is null for real hardware, else it must outlive the scene.
    explicit SceneSetup(const ReceiverControls *receiver) : m_receiver(receiver) { }

    /// False if a file or a fault is not understood, or if something is asked for that only the
    /// virtual receiver has; error() tells which and why, in one line
    /// of the user's language.
    bool open(const HostSettings &settings);

    /// Another scene for a receiver that is set up, its stream may be on. False as open() does,
    /// with the scene before in place.
    bool change(const HostSettings &settings);

    /// Length in seconds, 0 if it never ends.
    double seconds() const;

    /// For the report: the file, "built-in" or "on the air".
    const QString &name() const { return m_name; }
    const QString &error() const { return m_error; }

    /// A line on each thing that is not as one might think: a recording that is not whole, an
    /// option that this scene does not heed, a place where it has nothing.
    const QStringList &notices() const { return m_notices; }

private:
    bool checkHardware(const HostSettings &settings);
    bool choose(const HostSettings &settings);
    bool choosePlayed(const HostSettings &settings, const QByteArray &path, double rateHz);
    void noticeUnheeded(const HostSettings &settings);
    void noticeEmptyPlaces(const HostSettings &settings);
    bool isGood(int result, const QString &subject);

    const ReceiverControls *m_receiver;
    QString m_name;
    QString m_error;
    QStringList m_notices;
};
} // namespace host
