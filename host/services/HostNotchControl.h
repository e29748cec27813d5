// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/NotchLimits.h"

#include "host_interfaces/RadioNotchFilterControlAbstract.h"

#include <QStringList>

#include <array>
#include <vector>

class DeviceFunctionsAbstract;
class QSettings;

namespace host
{
/// The table of radio notch filters: for each amateur band, and for all that lies outside of them,
/// eight filters and one switch.
///
/// Bands count as in DeviceFunctionsAbstract::listAmatureBands(); the index after the last one is
/// where getBandFromFreq() puts a frequency in none of them. In the settings a band goes by its
/// name: which bands there are depends on the country. GUI thread.
///
/// A device has filters for one band only and takes nothing for another, so a change of band leaves
/// it with the filters of the band before: resend() the band that became current.
class HostNotchControl : public RadioNotchFilterControlAbstract
{
    Q_OBJECT

public:
    static constexpr Filter kUnused{100.0, 0.0, false};

    /// Names of the amateur bands, none twice.
    explicit HostNotchControl(const QStringList &bandNames, QObject *parent = nullptr);

    static QStringList bandNames(DeviceFunctionsAbstract &functions);

    std::size_t bandCount() override { return m_bands.size(); }
    std::size_t filterCount() override { return NotchLimits::kFilters; }

    /// False, or an unused filter, for a band or filter that is none.
    bool bandEnabled(std::size_t band) override;
    Filter filter(std::size_t band, std::size_t id) override;

    /// Each raises its signal on a change. False, with nothing changed, for a band or filter that
    /// is none and for a frequency or width that is out of range or no number.
    bool setFilter(std::size_t band, std::size_t id, const Filter &filter);
    bool setBandEnabled(std::size_t band, bool enable);

    /// Raises the signals of a band without a change: all filters, then the switch.
    void resend(std::size_t band);

    /// Writes what differs from an unused table into the group "RadioNotchFilters".
    void writeSettings(QSettings &settings) const;

    /// Takes the whole table from the settings and raises the signals of what changes. An entry
    /// that is no filter, or one too many for its band, is left out with a warning.
    void readSettings(QSettings &settings);

    void reserved1() override { }
    void reserved4() override { }
    void reserved6() override { }

private:
    struct Band
    {
        QString name;
        bool enable = false;
        std::array<Filter, NotchLimits::kFilters> filters;
    };

    bool has(std::size_t band, std::size_t id) const
    {
        return band < m_bands.size() && id < NotchLimits::kFilters;
    }

    std::vector<Band> m_bands;
};
} // namespace host
