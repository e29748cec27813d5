// SPDX-License-Identifier: GPL-3.0-or-later
#include "Scene.h"

#include "virtual_receiver/virtual_receiver.h"

#include <QFile>

namespace host
{
bool Scene::open(const HostSettings &settings)
{
    vr_reset();
    if (!choose(settings))
        return false;
    if (!settings.eepromFile.isEmpty()
        && !isGood(vr_set_eeprom(QFile::encodeName(settings.eepromFile)), settings.eepromFile))
        return false;
    return settings.fault.isEmpty()
        || isGood(vr_fault(settings.fault.toUtf8()), "--fault " + settings.fault);
}

bool Scene::choose(const HostSettings &settings)
{
    if (settings.sceneFile.isEmpty()) {
        m_name = "built-in";
        return isGood(vr_scene_builtin(), "built-in scene");
    }
    m_name = settings.sceneFile;
    const QByteArray path = QFile::encodeName(m_name);
    if (settings.sceneFormat.isEmpty() && m_name.endsWith(".band", Qt::CaseInsensitive))
        return isGood(vr_scene_band(path), m_name);
    const QByteArray format = settings.sceneFormat.toLatin1();
    return isGood(vr_scene_file(path, format.isEmpty() ? nullptr : format.constData(),
                      settings.sceneRateHz, settings.sceneFrequencyHz),
        m_name);
}

double Scene::seconds() const
{
    return vr_scene_seconds();
}

bool Scene::isGood(int result, const QString &subject)
{
    if (result != 0) {
        const QString reason = QString::fromLocal8Bit(vr_last_error()).simplified();
        m_error = reason.contains(subject) ? reason : subject + ": " + reason;
    }
    return result == 0;
}
} // namespace host
