// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/DeviceChoice.h"

#include "settings/HostSettings.h"
#include "settings/SettingsStore.h"

#include "library/DeviceKind.h"

#include <QSettings>

namespace host
{
namespace
{
const QString kKey = QStringLiteral("Radio/device");

bool needsVirtual(const HostSettings &settings)
{
    return !settings.sceneFile.isEmpty() || !settings.eepromFile.isEmpty()
        || !settings.fault.isEmpty() || settings.freeRun;
}
} // namespace

DeviceChoice DeviceChoice::of(const HostSettings &settings)
{
    if (!settings.d2xxFile.isEmpty())
        return {};
    if (const DeviceKind *given = findDeviceKind(settings.device))
        return {given, false};
    const DeviceKind &standard = deviceKinds().front();
    if (needsVirtual(settings))
        return {&standard, false};
    const QString file =
        settings.settingsFile.isEmpty() ? SettingsStore::defaultPath() : settings.settingsFile;
    const QString stored = QSettings(file, QSettings::IniFormat).value(kKey).toString();
    const DeviceKind *kind = findDeviceKind(stored);
    return {kind ? kind : &standard, true};
}

void DeviceChoice::store(QSettings &settings, const DeviceKind &kind)
{
    settings.setValue(kKey, kind.key);
}
} // namespace host
