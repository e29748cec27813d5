// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/FilterTaps.h"

#include <gtest/gtest.h>

using DspCore::Modulation;

TEST(FilterTapsTest, EachClassHasItsOwnLength)
{
    FilterTaps taps;
    EXPECT_EQ(taps.setModulation(Modulation::DRM), 1537);
    EXPECT_FALSE(taps.set(FilterTaps::Ssb, 301)) << "stored for later";
    EXPECT_FALSE(taps.set(FilterTaps::Dig, 303));
    EXPECT_FALSE(taps.set(FilterTaps::Cw, 9000));
    EXPECT_EQ(taps.set(FilterTaps::Am, 100), 200);
    const struct
    {
        Modulation mode;
        FilterTaps::Class modes;
        int taps;
    } rows[] = {{Modulation::LSB, FilterTaps::Ssb, 301}, {Modulation::USB, FilterTaps::Ssb, 301},
        {Modulation::DIGL, FilterTaps::Dig, 303}, {Modulation::DIGU, FilterTaps::Dig, 303},
        {Modulation::CW, FilterTaps::Cw, 8000}, {Modulation::AM, FilterTaps::Am, 200},
        {Modulation::SAM, FilterTaps::Am, 200}, {Modulation::DSB, FilterTaps::Am, 200},
        {Modulation::NFM, FilterTaps::Am, 200}, {Modulation::WFM, FilterTaps::Am, 200}};
    for (const auto &row : rows) {
        EXPECT_EQ(taps.setModulation(row.mode), row.taps) << int(row.mode);
        EXPECT_EQ(taps.set(row.modes, row.taps), row.taps) << "acts at once";
        EXPECT_EQ(taps.set(FilterTaps::Am, 200), 200) << "in every mode";
    }
}
