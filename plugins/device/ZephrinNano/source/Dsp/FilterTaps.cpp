// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/FilterTaps.h"

#include <algorithm>

using DspCore::Modulation;

namespace
{
constexpr int kFewest = 200;
constexpr int kMost = 8000;

FilterTaps::Class classOf(Modulation modulation)
{
    switch (modulation) {
    case Modulation::LSB:
    case Modulation::USB:
        return FilterTaps::Ssb;
    case Modulation::DIGL:
    case Modulation::DIGU:
        return FilterTaps::Dig;
    case Modulation::CW:
        return FilterTaps::Cw;
    default:
        return FilterTaps::Am;
    }
}
} // namespace

int FilterTaps::setModulation(Modulation modulation)
{
    m_current = classOf(modulation);
    return m_taps[m_current];
}

std::optional<int> FilterTaps::set(Class modes, int taps)
{
    m_taps[modes] = std::clamp(taps, kFewest, kMost);
    if (modes != m_current && modes != Am)
        return std::nullopt;
    return m_taps[modes];
}
