// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/HostNotchControl.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <QSettings>

#include <cmath>
#include <optional>

namespace host
{
namespace
{
using Filter = HostNotchControl::Filter;

const QString kGroup = QStringLiteral("RadioNotchFilters");
const QString kOutside = QStringLiteral("outside");
constexpr char kFilterKey[] = "filter"; // and its number, from 0

bool isSame(const Filter &a, const Filter &b)
{
    return a.width == b.width && a.freq == b.freq && a.enable == b.enable;
}

// Written so that it is false for a number that is none.
bool isValid(const Filter &filter)
{
    return filter.width >= NotchLimits::kMinWidthHz && filter.width <= NotchLimits::kMaxWidthHz
        && filter.freq >= 0.0 && filter.freq <= NotchLimits::kMaxFrequencyHz;
}

QString switchKey(const QString &band)
{
    return band + QStringLiteral("/enabled");
}

QString filterKey(const QString &band, std::size_t id)
{
    return band + '/' + kFilterKey + QString::number(id);
}

QStringList toText(const Filter &filter)
{
    // As many digits as it takes to read the same number.
    return {QString::number(filter.freq, 'g', 17), QString::number(filter.width, 'g', 17),
        filter.enable ? "on" : "off"};
}

// QVariant takes any text for true.
std::optional<bool> toSwitch(const QString &text)
{
    if (text == "on")
        return true;
    return text == "off" ? std::optional(false) : std::nullopt;
}

std::optional<Filter> toFilter(const QStringList &text)
{
    if (text.size() != 3)
        return std::nullopt;
    bool isFreq = false, isWidth = false;
    const std::optional<bool> enable = toSwitch(text[2]);
    const Filter filter{text[1].toDouble(&isWidth), text[0].toDouble(&isFreq), enable == true};
    return isFreq && isWidth && enable && isValid(filter) ? std::optional(filter) : std::nullopt;
}

// The value of a key, the default if there is none; of one that cannot be used it warns.
template <typename Value, typename Text>
Value read(const QSettings &settings, const QString &key, Value otherwise,
    std::optional<Value> (*convert)(const Text &))
{
    if (!settings.contains(key))
        return otherwise;
    const QVariant stored = settings.value(key);
    if (const auto value = convert(stored.value<Text>()))
        return *value;
    qWarning("settings: %s/%s cannot be \"%s\", left out", qUtf8Printable(kGroup),
        qUtf8Printable(key), qUtf8Printable(stored.toStringList().join(", ")));
    return otherwise;
}
// A file written by hand, or for a receiver with more filters.
void warnOfSurplus(QSettings &settings, const QString &band)
{
    settings.beginGroup(band);
    for (const QString &key : settings.childKeys()) {
        bool isFilter = false;
        const unsigned id = key.mid(int(qstrlen(kFilterKey))).toUInt(&isFilter);
        if (key.startsWith(kFilterKey) && isFilter && id >= NotchLimits::kFilters)
            qWarning("settings: %s/%s/%s left out, a band has %zu filters", qUtf8Printable(kGroup),
                qUtf8Printable(band), qUtf8Printable(key), NotchLimits::kFilters);
    }
    settings.endGroup();
}
} // namespace

HostNotchControl::HostNotchControl(const QStringList &bandNames, QObject *parent)
    : RadioNotchFilterControlAbstract(parent)
{
    for (const QString &name : bandNames + QStringList{kOutside}) {
        m_bands.push_back({name, false, {}});
        m_bands.back().filters.fill(kUnused);
    }
}

QStringList HostNotchControl::bandNames(DeviceFunctionsAbstract &functions)
{
    QStringList names;
    for (const auto &band : functions.listAmatureBands())
        names << band.name;
    return names;
}

bool HostNotchControl::bandEnabled(std::size_t band)
{
    return band < m_bands.size() && m_bands[band].enable;
}

RadioNotchFilterControlAbstract::Filter HostNotchControl::filter(std::size_t band, std::size_t id)
{
    return has(band, id) ? m_bands[band].filters[id] : kUnused;
}

bool HostNotchControl::setFilter(std::size_t band, std::size_t id, const Filter &filter)
{
    if (!has(band, id) || !isValid(filter))
        return false;
    Filter &kept = m_bands[band].filters[id];
    if (isSame(kept, filter))
        return true;
    kept = filter;
    Q_EMIT paramChanged(band, id, filter.enable, filter.freq, filter.width);
    return true;
}

bool HostNotchControl::setBandEnabled(std::size_t band, bool enable)
{
    if (band >= m_bands.size())
        return false;
    if (m_bands[band].enable == enable)
        return true;
    m_bands[band].enable = enable;
    Q_EMIT enableFiltersChanged(band, enable);
    return true;
}

void HostNotchControl::resend(std::size_t band)
{
    if (band >= m_bands.size())
        return;
    for (std::size_t id = 0; id < NotchLimits::kFilters; ++id) {
        const Filter sent = m_bands[band].filters[id];
        Q_EMIT paramChanged(band, id, sent.enable, sent.freq, sent.width);
    }
    Q_EMIT enableFiltersChanged(band, m_bands[band].enable);
}

void HostNotchControl::writeSettings(QSettings &settings) const
{
    settings.beginGroup(kGroup);
    for (const Band &band : m_bands) {
        settings.remove(band.name); // bands of another country stay
        if (band.enable)
            settings.setValue(switchKey(band.name), "on");
        for (std::size_t id = 0; id < NotchLimits::kFilters; ++id)
            if (!isSame(band.filters[id], kUnused))
                settings.setValue(filterKey(band.name, id), toText(band.filters[id]));
    }
    settings.endGroup();
}

void HostNotchControl::readSettings(QSettings &settings)
{
    settings.beginGroup(kGroup);
    for (std::size_t band = 0; band < m_bands.size(); ++band) {
        const QString &name = m_bands[band].name;
        for (std::size_t id = 0; id < NotchLimits::kFilters; ++id)
            setFilter(band, id, read(settings, filterKey(name, id), kUnused, toFilter));
        setBandEnabled(band, read(settings, switchKey(name), false, toSwitch));
        warnOfSurplus(settings, name);
    }
    settings.endGroup();
}
} // namespace host
