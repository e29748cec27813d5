// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/AgcTable.h"

#include <gtest/gtest.h>

#include <stdexcept>

using DspCore::AgcMode;

TEST(AgcTableTest, SettingsFollowModeAndTimes)
{
    const auto expect = [](const AgcTable::Setting &setting, bool on, double attack, double decay,
                            double hangTime) {
        EXPECT_EQ(setting.on, on);
        EXPECT_EQ(setting.times.attack, attack);
        EXPECT_EQ(setting.times.decay, decay);
        EXPECT_EQ(setting.times.hangTime, hangTime);
    };
    AgcTable table;
    EXPECT_EQ(table.mode(), AgcMode::Off);
    expect(table.setMode(AgcMode::Med), true, 1.7, 250.0, 250.0);
    EXPECT_FALSE(table.setTime(AgcMode::Off, &AgcTable::Param::decay, 77.0)) << "not in force";
    expect(*table.setTime(AgcMode::Med, &AgcTable::Param::attack, 3.0), true, 3.0, 250.0, 250.0);
    expect(table.setMode(AgcMode(7)), false, 2.0, 77.0, 400.0);
    EXPECT_EQ(table.mode(), AgcMode::User);
    expect(*table.setTime(AgcMode::User, &AgcTable::Param::hangTime, 5.0), true, 2.5, 1000.0, 5.0);
    expect(table.setMode(AgcMode(-1)), false, 2.0, 77.0, 400.0);
    EXPECT_EQ(table.mode(), AgcMode::Off);
    expect(*table.setTime(AgcMode::Off, &AgcTable::Param::attack, 9.0), false, 9.0, 77.0, 400.0);
    EXPECT_THROW(table.setTime(AgcMode(6), &AgcTable::Param::attack, 1.0), std::out_of_range);
}
