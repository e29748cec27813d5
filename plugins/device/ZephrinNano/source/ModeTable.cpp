// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModeTable.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

namespace
{
using DspCore::AgcMode;
using DspCore::Modulation;
using Filter = ModeTable::Filter;
using Filters = std::array<Filter, ModeTable::kFilters>;

constexpr Filter around(int width, const char *name)
{
    return {-width / 2, width / 2, name};
}

constexpr int kSidebandStart = 70; // Hz from the carrier, for every filter of a sideband

constexpr Filter above(int edge, const char *name)
{
    return {kSidebandStart, edge, name};
}

constexpr Filters mirrored(Filters filters)
{
    for (Filter &filter : filters)
        filter = {-filter.FilterFreqHigh, -filter.FilterFreqLow, filter.name};
    return filters;
}

constexpr Filters repeated(Filter filter)
{
    Filters filters{};
    filters.fill(filter);
    return filters;
}

constexpr Filters kBothSidebands{{around(3000, "3K"), around(3500, "3.5K"), around(4000, "4K"),
    around(5000, "5K"), around(6000, "6K"), around(8000, "8K"), around(10000, "10K"),
    around(12000, "12K"), around(16000, "16K")}};

constexpr Filters kUpperSideband{{above(1800, "1.8K"), above(2000, "2K"), above(2200, "2.2K"),
    above(2500, "2.5K"), above(2700, "2.7K"), above(2900, "2.9K"), above(3000, "3.0K"),
    above(3300, "3.3K"), above(3500, "3.5K")}};

constexpr Filters kLowerSideband = mirrored(kUpperSideband);

constexpr Filters kCw{{around(50, "50"), around(100, "100"), around(250, "250"), around(400, "400"),
    around(500, "500"), around(650, "650"), around(800, "800"), around(1000, "1000"),
    around(1200, "1200")}};

constexpr Filters kWideFm{{around(50000, "50K"), around(80000, "80K"), around(110000, "110K"),
    around(120000, "120K"), around(150000, "150K"), around(180000, "180K"), around(240000, "240K"),
    around(280000, "280K"), around(310000, "310K")}};

constexpr Filters kDrm = repeated(around(10000, "10K"));

// By mode number, which is not the order of the mode buttons.
constexpr std::array<ModeTable, 11> kModes{{
    {&kBothSidebands, -18000, 18000, 3, AgcMode::Long, true, 9}, // AM
    {&kBothSidebands, -18000, 18000, 3, AgcMode::Long, true, 9}, // SAM
    {&kBothSidebands, -18000, 18000, 3, AgcMode::Long, true, 9}, // DSB
    {&kLowerSideband, -10000, 0, 6, AgcMode::Slow, false, 9},    // LSB
    {&kUpperSideband, 0, 10000, 6, AgcMode::Slow, false, 9},     // USB
    {&kCw, -10000, 10000, 1, AgcMode::Fast, true, 9},            // CW
    {&kBothSidebands, -18000, 18000, 3, AgcMode::Long, true, 9}, // NFM
    {&kLowerSideband, -15000, 0, 6, AgcMode::Slow, false, 9},    // DIGL
    {&kUpperSideband, 0, 15000, 6, AgcMode::Slow, false, 9},     // DIGU
    {&kWideFm, -156000, 156000, 0, AgcMode::Long, true, 9},      // WFM
    {&kDrm, -5000, 5000, 0, AgcMode::Long, true, 1},             // DRM
}};

// A row forgotten would be filled with nothing.
static_assert(kModes.back().filters != nullptr);

// Host and receiver count the modes alike.
using Host = DeviceFunctionsAbstract;
static_assert(int(Host::AM) == int(Modulation::AM) && int(Host::SAM) == int(Modulation::SAM)
    && int(Host::DSB) == int(Modulation::DSB) && int(Host::LSB) == int(Modulation::LSB)
    && int(Host::USB) == int(Modulation::USB) && int(Host::CW) == int(Modulation::CW)
    && int(Host::NFM) == int(Modulation::NFM) && int(Host::DIGL) == int(Modulation::DIGL)
    && int(Host::DIGU) == int(Modulation::DIGU) && int(Host::WFM) == int(Modulation::WFM)
    && int(Host::DRM) == int(Modulation::DRM) && kModes.size() == std::size_t(Host::DRM) + 1);
} // namespace

const ModeTable *ModeTable::of(unsigned int mode)
{
    return mode < kModes.size() ? &kModes[mode] : nullptr;
}

const ModeTable::Filter *ModeTable::filter(unsigned int mode, unsigned int filter)
{
    const ModeTable *table = of(mode);
    return table && filter < kFilters ? &(*table->filters)[filter] : nullptr;
}
