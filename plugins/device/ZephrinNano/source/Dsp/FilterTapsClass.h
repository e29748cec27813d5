// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <cstddef>

/// The classes of modes that share one length of the band filter.
enum FilterTapsClass : std::size_t {
    kSsbTaps = 0,
    kAmTaps = 1, // every mode that is in no other class
    kDigTaps = 2,
    kCwTaps = 3,
    kFilterTapsClasses = 4,
};

constexpr int kDefaultFilterTaps = 1537;

constexpr FilterTapsClass filterTapsClass(DspCore::Modulation modulation)
{
    switch (modulation) {
    case DspCore::Modulation::LSB:
    case DspCore::Modulation::USB:
        return kSsbTaps;
    case DspCore::Modulation::DIGL:
    case DspCore::Modulation::DIGU:
        return kDigTaps;
    case DspCore::Modulation::CW:
        return kCwTaps;
    default:
        return kAmTaps;
    }
}
