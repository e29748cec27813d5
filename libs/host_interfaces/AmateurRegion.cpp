// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/AmateurRegion.h"

#include "host_interfaces/Common.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryFile>

namespace
{
const char *const kGroup = "ITU";
const char *const kEnable11M = "Band11M";
const char *const kEnable60M = "Band60M";
const char *const kCountry = "Country";

QString fileName()
{
    return Common::settingsPath() + "/itu.ini";
}

bool hasRoomBeside(const QString &name)
{
    constexpr qint64 kOwnBytes = 256; // what is to be kept
    const QByteArray bytes(int(QFileInfo(name).size() + kOwnBytes), '\0');
    QTemporaryFile probe(name + ".XXXXXX");
    return probe.open() && probe.write(bytes) == bytes.size() && probe.flush();
}
} // namespace

std::unique_ptr<AmateurRegion> AmateurRegion::INSTANCE;

AmateurRegion::AmateurRegion(QObject *parent)
    : QObject(parent), m_country(QLocale::system().country())
{
    const bool hasFile = QFile::exists(fileName());
    if (!hasFile)
        saveSettings();
    qRegisterMetaType<AmateurRegion::Band>("AmateurRegion::Band");
    restoreSettings();
    m_avalible60M = avalible60M(m_country);
    m_current = defaultRegion(m_country);
    // A file that lacks a key is completed.
    if (hasFile)
        saveSettings();
}

AmateurRegion *AmateurRegion::instance()
{
    if (!INSTANCE)
        INSTANCE.reset(new AmateurRegion);
    return INSTANCE.get();
}

void AmateurRegion::init()
{
    m_table.clear();
    for (Band band : bands())
        m_table.append(getInfo(band));
}

int AmateurRegion::band(unsigned long long frequency) const
{
    for (int index = 0; index < m_table.size(); ++index) {
        const BandInfo &info = m_table[index];
        if (info.low <= frequency && frequency <= info.high)
            return index;
    }
    return -1;
}

bool AmateurRegion::avalible11M(QLocale::Country) const
{
    return m_enable11M;
}

bool AmateurRegion::avalible60M(QLocale::Country country) const
{
    return std::get<0>(limits60M(country));
}

QString AmateurRegion::info() const
{
    return "Location: " + QLocale::countryToString(m_country) + "\nITU: Region "
        + QString::number(m_current + 1);
}

QStringList AmateurRegion::countries()
{
    QStringList names;
    for (int country = 0; country <= QLocale::LastCountry; ++country)
        names.append(QLocale::countryToString(QLocale::Country(country)));
    return names;
}

void AmateurRegion::setCurrent(Region region)
{
    if (region == m_current)
        return;
    m_current = region;
    saveSettings();
}

void AmateurRegion::setEnable11M(bool enable)
{
    if (enable == m_enable11M)
        return;
    m_enable11M = enable;
    saveSettings();
}

void AmateurRegion::setEnable60M(bool enable)
{
    if (enable == m_enable60M)
        return;
    m_enable60M = enable;
    saveSettings();
}

void AmateurRegion::saveSettings()
{
    const QString name = fileName();
    QDir().mkpath(QFileInfo(name).path());
    // QSettings replaces its file without looking whether the new one reached the disk.
    if (!hasRoomBeside(name))
        return;
    QSettings settings(name, QSettings::IniFormat);
    settings.beginGroup(kGroup);
    settings.setValue(kEnable11M, m_enable11M);
    settings.setValue(kEnable60M, m_enable60M);
    settings.setValue(kCountry, int(m_country));
    settings.endGroup();
}

void AmateurRegion::restoreSettings()
{
    QSettings settings(fileName(), QSettings::IniFormat);
    settings.beginGroup(kGroup);
    m_enable11M = settings.value(kEnable11M, false).toBool();
    m_enable60M = settings.value(kEnable60M, false).toBool();
    m_country = QLocale::Country(settings.value(kCountry, int(m_country)).toInt());
    settings.endGroup();
}
