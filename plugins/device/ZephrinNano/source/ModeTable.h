// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <array>

/// What the host offers for a mode: its receive filters and its defaults.
struct ModeTable
{
    static constexpr unsigned int kFilters = 9;

    /// Edges in hertz relative to the carrier.
    struct Filter
    {
        int FilterFreqLow;
        int FilterFreqHigh;
        const char *name;
    };

    const std::array<Filter, kFilters> *filters;
    int limitLow;  // hertz relative to the carrier, the lowest edge that the user can set
    int limitHigh; // hertz relative to the carrier, the highest one
    int defaultFilter;
    DspCore::AgcMode defaultAgc;
    bool symmetric; // the edges move together
    int filterNum;  // buttons to show

    /// Null for a number that is no mode.
    static const ModeTable *of(unsigned int mode);

    /// Null for a number that is no mode or no filter.
    static const Filter *filter(unsigned int mode, unsigned int filter);
};
