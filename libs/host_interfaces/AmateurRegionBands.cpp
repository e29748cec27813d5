// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/AmateurRegion.h"

#include <array>

namespace
{
/// When the switches and limits let the user have a band.
enum class Rule {
    Always,
    Never,
    Switch11M,
};

struct Plan
{
    quint64 low = 0;  // Hz
    quint64 high = 0; // Hz
    Rule rule = Rule::Always;
};

/// The plans that differ: two countries, and the regions for all others.
enum Column {
    kJapan,
    kRegion1,
    kRegion2,
    kRegion3,
    kThailand,
    kColumns,
};

struct Row
{
    const char *name;
    std::array<Plan, kColumns> plans;
};

constexpr std::array<Plan, kColumns> everywhere(quint64 low, quint64 high)
{
    const Plan plan{low, high};
    return {plan, plan, plan, plan, plan};
}

// By AmateurRegion::Band, columns as above. The 60 m band has rules of its own.
constexpr std::array<Row, 14> kRows{{
    {"160M",
        {{{1800000, 1923500}, {1810000, 2000000}, {1800000, 2000000}, {1800000, 2000000},
            {1800000, 2000000}}}},
    {"80M",
        {{{3500000, 3805000}, {3500000, 3800000}, {3500000, 4000000}, {3500000, 3900000},
            {3500000, 3600000}}}},
    {"60M", {}},
    {"40M",
        {{{7000000, 7200000}, {7000000, 7300000}, {7000000, 7300000}, {7000000, 7300000},
            {7000000, 7200000, Rule::Never}}}},
    {"30M",
        {{{10100000, 10150000}, {10100000, 10150000}, {10100000, 10150000}, {10100000, 10157300},
            {10100000, 10150000, Rule::Never}}}},
    {"20M", everywhere(14000000, 14350000)},
    {"17M", everywhere(18068000, 18168000)},
    {"15M", everywhere(21000000, 21450000)},
    {"12M", everywhere(24890000, 24990000)},
    {"11M",
        {{{26965000, 28000000, Rule::Never}, {26965000, 28000000, Rule::Switch11M},
            {26965000, 28000000, Rule::Switch11M}, {26965000, 28000000, Rule::Switch11M},
            {26965000, 28000000, Rule::Switch11M}}}},
    {"10M", everywhere(28000000, 29700000)},
    {"6M", everywhere(50000000, 54000000)},
    {"2M",
        {{{144000000, 146000000}, {144000000, 146000000}, {144000000, 148000000},
            {144000000, 148000000}, {144100000, 147000000}}}},
    {"0.7M",
        {{{430000000, 440000000}, {430000000, 440000000}, {420000000, 450000000},
            {430000000, 450000000}, {430000000, 450000000}}}},
}};

Column column(QLocale::Country country, AmateurRegion::Region region)
{
    if (country == QLocale::Japan)
        return kJapan;
    if (country == QLocale::Thailand)
        return kThailand;
    if (region == AmateurRegion::Region1)
        return kRegion1;
    return region == AmateurRegion::Region3 ? kRegion3 : kRegion2;
}
} // namespace

QList<AmateurRegion::Band> AmateurRegion::bands() const
{
    QList<Band> list;
    for (std::size_t band = 0; band < kRows.size(); ++band)
        list.append(Band(band));
    return list;
}

QPair<quint64, quint64> AmateurRegion::band60M(Region region) const
{
    if (region == Region1)
        return {5275000, 5450000};
    return {5100000, 5500000};
}

AmateurRegion::BandInfo AmateurRegion::info60M() const
{
    const QString name = kRows[Band60M].name;
    const auto [hasLimits, low, high] = limits60M(m_country);
    if (hasLimits)
        return {true, low, high, name};
    if (!m_enable60M)
        return {false, 0, 0, name};
    const auto edges = band60M(m_current);
    return {true, edges.first, edges.second, name};
}

AmateurRegion::BandInfo AmateurRegion::getInfo(Band band) const
{
    if (band < Band160M || band > Band07M)
        return {};
    if (band == Band60M)
        return info60M();
    const Row &row = kRows[std::size_t(band)];
    const Plan &plan = row.plans[column(m_country, m_current)];
    const bool available =
        plan.rule == Rule::Switch11M ? avalible11M(m_country) : plan.rule == Rule::Always;
    return {available, plan.low, plan.high, row.name};
}
