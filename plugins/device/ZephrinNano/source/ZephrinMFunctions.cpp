// SPDX-License-Identifier: GPL-3.0-or-later
#include "ZephrinMFunctions.h"

#include "ModeTable.h"
#include "host_interfaces/AmateurRegion.h"

namespace
{
constexpr quint64 kTopHz = 800000000;

// Never offered, whatever the region says.
constexpr AmateurRegion::Band kLeftOut = AmateurRegion::Band07M;

QList<DeviceFunctionsAbstract::AmatureBand> amateurBands()
{
    QList<DeviceFunctionsAbstract::AmatureBand> list;
    const AmateurRegion *region = AmateurRegion::instance();
    for (AmateurRegion::Band band : region->bands()) {
        const AmateurRegion::BandInfo info = region->getInfo(band);
        if (band != kLeftOut && info.available)
            list.append({info.low, info.high, info.name});
    }
    return list;
}
} // namespace

ZephrinMFunctions::ZephrinMFunctions()
    : m_modes{{AM, "AM"}, {SAM, "SAM"}, {DSB, "DSB"}, {LSB, "LSB"}, {USB, "USB"}, {CW, "CW"},
        {NFM, "NFM"}, {WFM, "WFM"}, {DIGL, "DIGL"}, {DIGU, "DIGU"}, {DRM, "DRM"}},
      m_amateurBands(amateurBands()), m_globalBands{{0, kTopHz, "RF"}}, m_agcNames{"Off", "Long",
                                                                            "Slow", "Med", "Fast",
                                                                            "User"}
{ }

int ZephrinMFunctions::getPreampIndex(bool, bool preamp)
{
    return preamp ? 0 : 1;
}

void ZephrinMFunctions::getAttAmpFromIndex(int index, bool *attenuator, bool *)
{
    if (attenuator)
        *attenuator = index == 0;
}

int ZephrinMFunctions::getBandFromFreq(double frequency)
{
    int index = 0;
    for (const AmatureBand &band : qAsConst(m_amateurBands)) {
        if (double(band.low) <= frequency && frequency <= double(band.high))
            return index;
        ++index;
    }
    return index;
}

DeviceFunctionsAbstract::Mode ZephrinMFunctions::defaultMode(unsigned int band)
{
    if (band <= AmateurRegion::Band30M)
        return LSB;
    if (band <= AmateurRegion::Band12M)
        return USB;
    return band <= AmateurRegion::Band2M ? NFM : AM;
}

int ZephrinMFunctions::defaultAgcMode(unsigned int mode)
{
    const ModeTable *table = ModeTable::of(mode);
    return int(table ? table->defaultAgc : DspCore::AgcMode::Long);
}

int ZephrinMFunctions::defaultFilterId(Mode mode)
{
    const ModeTable *table = ModeTable::of(mode);
    return table ? table->defaultFilter : 0;
}

int ZephrinMFunctions::maxFilterNum()
{
    return ModeTable::kFilters;
}

int ZephrinMFunctions::filterNum(Mode mode)
{
    const ModeTable *table = ModeTable::of(mode);
    return table ? table->filterNum : maxFilterNum();
}

QString ZephrinMFunctions::filterName(Mode mode, unsigned int filter)
{
    const ModeTable::Filter *entry = ModeTable::filter(mode, filter);
    return entry ? QString(entry->name) : QString();
}

QPair<double, double> ZephrinMFunctions::listFilterNum(Mode mode, unsigned int filter)
{
    const ModeTable::Filter *entry = ModeTable::filter(mode, filter);
    if (!entry)
        return {0.0, 0.0};
    return {double(entry->FilterFreqLow), double(entry->FilterFreqHigh)};
}

bool ZephrinMFunctions::isSimmetricFilter(Mode mode)
{
    const ModeTable *table = ModeTable::of(mode);
    return !table || table->symmetric;
}

QPair<double, double> ZephrinMFunctions::filterLimits(Mode mode)
{
    const ModeTable *table = ModeTable::of(mode);
    if (!table)
        table = ModeTable::of(WFM); // the widest
    return {double(table->limitLow), double(table->limitHigh)};
}
