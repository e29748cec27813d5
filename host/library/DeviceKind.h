// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <vector>

namespace host
{
/// A way to a receiver that comes with the program: a row of deviceKinds(), from which follow the
/// option --device, the menu and what is kept in the settings.
struct DeviceKind
{
    QString key;       ///< for command line and settings file
    const char *title; ///< for the menu, in English; see name()
    QStringList files; ///< its library seen from the program: where installed, where built
    bool isHardware;   ///< whether it is waited for until somebody plugs it in

    /// The title in the language of the program.
    QString name() const { return tr(title); }

private:
    Q_DECLARE_TR_FUNCTIONS(host::DeviceKind)
};

/// The first one is taken where nothing else was chosen: it needs no hardware.
const std::vector<DeviceKind> &deviceKinds();

/// Null if there is none of that key.
const DeviceKind *findDeviceKind(const QString &key);
} // namespace host
