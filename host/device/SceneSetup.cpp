// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/SceneSetup.h"

#include <QFile>

namespace host
{
bool SceneSetup::open(const HostSettings &settings)
{
    if (!m_receiver)
        return checkHardware(settings);
    m_receiver->reset();
    if (!choose(settings))
        return false;
    if (!settings.eepromFile.isEmpty()
        && !isGood(
            m_receiver->setEeprom(QFile::encodeName(settings.eepromFile)), settings.eepromFile))
        return false;
    return settings.fault.isEmpty()
        || isGood(m_receiver->fault(settings.fault.toUtf8()), "--fault " + settings.fault);
}

bool SceneSetup::checkHardware(const HostSettings &settings)
{
    m_name = "on the air";
    const struct
    {
        const char *option;
        bool isSet;
    } needs[] = {
        {"scene", !settings.sceneFile.isEmpty()},
        {"eeprom", !settings.eepromFile.isEmpty()},
        {"fault", !settings.fault.isEmpty()},
        {"free-run", settings.freeRun},
    };
    for (const auto &need : needs) {
        if (need.isSet) {
            m_error = QString("--%1 needs the virtual receiver, and %2 is another library")
                          .arg(need.option, settings.d2xxFile);
            return false;
        }
    }
    return true;
}

bool SceneSetup::choose(const HostSettings &settings)
{
    if (settings.sceneFile.isEmpty()) {
        m_name = "built-in";
        return isGood(m_receiver->sceneBuiltin(), "built-in scene");
    }
    m_name = settings.sceneFile;
    const QByteArray path = QFile::encodeName(m_name);
    if (settings.sceneFormat.isEmpty() && m_name.endsWith(".band", Qt::CaseInsensitive))
        return isGood(m_receiver->sceneBand(path), m_name);
    return choosePlayed(settings, path, settings.sceneRateHz);
}

/// A recording that was broken off does not tell its rate: most likely it is the one that is
/// received at now.
bool SceneSetup::choosePlayed(const HostSettings &settings, const QByteArray &path, double rateHz)
{
    const QByteArray format = settings.sceneFormat.toLatin1();
    const int result = m_receiver->sceneFile(
        path, format.isEmpty() ? nullptr : format.constData(), rateHz, settings.sceneFrequencyHz);
    if (result != 0 && rateHz == 0.0 && QByteArray(m_receiver->lastError()).contains("broken off"))
        return choosePlayed(settings, path, settings.deviceRateHz);
    if (!isGood(result, m_name))
        return false;
    const QString notice = QString::fromLocal8Bit(m_receiver->sceneNotice()).simplified();
    if (!notice.isEmpty())
        m_notice = m_name + ": " + notice;
    if (!notice.isEmpty() && rateHz != settings.sceneRateHz)
        m_notice += "; taken to be at --rate, as no --scene-rate is given";
    return true;
}

double SceneSetup::seconds() const
{
    return m_receiver ? m_receiver->sceneSeconds() : 0.0;
}

bool SceneSetup::isGood(int result, const QString &subject)
{
    if (result != 0) {
        const QString reason = QString::fromLocal8Bit(m_receiver->lastError()).simplified();
        m_error = reason.contains(subject) ? reason : subject + ": " + reason;
    }
    return result == 0;
}
} // namespace host
