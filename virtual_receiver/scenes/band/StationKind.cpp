// SPDX-License-Identifier: GPL-3.0-or-later
#include "StationKind.h"

#include "AmModulator.h"
#include "CwModulator.h"
#include "NfmModulator.h"
#include "SsbModulator.h"

#include <algorithm>
#include <iterator>

namespace vr
{
namespace
{
using Made = std::unique_ptr<Modulator>;
using Told = const StationDescription &;

Made upperSideBand(Told station, AudioLoop audio)
{
    return std::make_unique<SsbModulator>(std::move(audio), station.clip->activeRms, true);
}

Made lowerSideBand(Told station, AudioLoop audio)
{
    return std::make_unique<SsbModulator>(std::move(audio), station.clip->activeRms, false);
}

Made amplitude(Told station, AudioLoop audio)
{
    return std::make_unique<AmModulator>(std::move(audio), station.depth);
}

Made frequency(Told station, AudioLoop audio)
{
    return std::make_unique<NfmModulator>(std::move(audio), station.deviationHz);
}

Made keyed(Told, AudioLoop keying)
{
    return std::make_unique<CwModulator>(std::move(keying));
}

constexpr StationKind kKinds[] = {
    {"usb", Programme::Audio, upperSideBand},
    {"lsb", Programme::Audio, lowerSideBand},
    {"am", Programme::Audio, amplitude, {"depth", &StationDescription::depth, 0.0, 1.0}},
    {"nfm", Programme::Audio, frequency,
        {"deviation", &StationDescription::deviationHz, 0.0, 6000.0}},
    {"cw", Programme::Keying, keyed},
    {"carrier", Programme::None, nullptr},
};
} // namespace

const StationKind *StationKind::find(std::string_view name)
{
    const auto kind = std::find_if(std::begin(kKinds), std::end(kKinds),
        [name](const StationKind &kind) { return kind.name == name; });
    return kind == std::end(kKinds) ? nullptr : kind;
}

std::string StationKind::names(const char *separator)
{
    std::string names;
    for (const StationKind &kind : kKinds)
        names += (names.empty() ? "" : separator) + std::string(kind.name);
    return names;
}
} // namespace vr
