// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QSettings;

namespace host
{
struct DeviceKind;
struct HostSettings;

/// Which kind of device a run has: what the command line names, else the virtual receiver where
/// another option needs it, else what was chosen last in the window.
struct DeviceChoice
{
    const DeviceKind *kind = nullptr; ///< null: the library of --d2xx
    bool isStored = false;            ///< not of this run's command line

    /// Looks into the settings file if it has to.
    static DeviceChoice of(const HostSettings &settings);

    /// Keeps the kind for the next start; no group is open.
    static void store(QSettings &settings, const DeviceKind &kind);
};
} // namespace host
