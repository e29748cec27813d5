// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/SceneSetup.h"

#include "device/ReceiverReason.h"
#include "settings/Numbers.h"

#include <QFile>

#include <algorithm>

namespace host
{
bool SceneSetup::open(const HostSettings &settings)
{
    if (!m_receiver)
        return checkHardware(settings);
    m_receiver->reset();
    if (!choose(settings))
        return false;
    noticeEmptyPlaces(settings);
    if (!settings.eepromFile.isEmpty()
        && !isGood(
            m_receiver->setEeprom(QFile::encodeName(settings.eepromFile)), settings.eepromFile))
        return false;
    return settings.fault.isEmpty()
        || isGood(m_receiver->fault(settings.fault.toUtf8()), "--fault " + settings.fault);
}

bool SceneSetup::change(const HostSettings &settings)
{
    const QString before = m_name;
    m_notices.clear();
    if (!m_receiver)
        return checkHardware(settings);
    if (choose(settings))
        return true;
    m_name = before;
    return false;
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
            m_error = tr("--%1 needs the virtual receiver (--device virtual)").arg(need.option);
            return false;
        }
    }
    return true;
}

bool SceneSetup::choose(const HostSettings &settings)
{
    if (settings.sceneFile.isEmpty()) {
        m_name = "built-in";
        return isGood(m_receiver->sceneBuiltin(), tr("built-in scene"));
    }
    m_name = settings.sceneFile;
    const QByteArray path = QFile::encodeName(m_name);
    if (settings.sceneFormat.isEmpty() && m_name.endsWith(".band", Qt::CaseInsensitive)) {
        noticeUnheeded(settings);
        return isGood(m_receiver->sceneBand(path), m_name);
    }
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
    const QString notice =
        receiverReason(QString::fromLocal8Bit(m_receiver->sceneNotice()).simplified());
    if (rateHz != settings.sceneRateHz)
        m_notices +=
            tr("%1: %2; taken to be at --rate, as no --scene-rate is given").arg(m_name, notice);
    else if (!notice.isEmpty())
        m_notices += m_name + ": " + notice;
    return true;
}

void SceneSetup::noticeUnheeded(const HostSettings &settings)
{
    for (const char *option : {"scene-rate", "scene-frequency"})
        if (settings.given.contains(option))
            m_notices += tr("--%1 does nothing for a band description").arg(option);
}

void SceneSetup::noticeEmptyPlaces(const HostSettings &settings)
{
    const double middleHz = m_receiver->sceneFrequency();
    const double halfHz = m_receiver->sceneWidth() / 2.0;
    if (middleHz == 0.0 || halfHz == 0.0)
        return; // it goes wherever the receiver is tuned
    const auto isEmpty = [&](double lowHz, double highHz) {
        return highHz < middleHz - halfHz || lowHz > middleHz + halfHz;
    };
    const QString low = formatNumber(middleHz - halfHz), high = formatNumber(middleHz + halfHz);
    const double reachHz = settings.deviceRateHz / 2.0;
    if (isEmpty(settings.centerHz - reachHz, settings.centerHz + reachHz))
        m_notices += tr("the scene has nothing around --center %1, it goes from %2 to %3")
                         .arg(formatNumber(settings.centerHz), low, high);
    else if (isEmpty(settings.tuneHz + std::min(0.0, settings.filterLowHz),
                 settings.tuneHz + std::max(0.0, settings.filterHighHz)))
        m_notices += tr("the scene has nothing at --tune %1, it goes from %2 to %3")
                         .arg(formatNumber(settings.tuneHz), low, high);
}

double SceneSetup::seconds() const
{
    return m_receiver ? m_receiver->sceneSeconds() : 0.0;
}

bool SceneSetup::isGood(int result, const QString &subject)
{
    if (result != 0) {
        const QString reason = QString::fromLocal8Bit(m_receiver->lastError()).simplified();
        const QString own = receiverReason(reason);
        m_error = reason.contains(subject) ? own : subject + ": " + own;
    }
    return result == 0;
}
} // namespace host
