// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/AxisTicks.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace
{
using host::AxisTicks;

QString written(const AxisTicks &axis)
{
    QStringList labels;
    for (const auto &tick : axis.ticks)
        labels << tick.label;
    return labels.join(' ') + ' ' + axis.unit;
}

TEST(AxisTicksTest, FrequenciesAreWrittenInTheSmallestStepsThatFit)
{
    const struct
    {
        double low;
        double high;
        int most;
        const char *text;
    } cases[] = {
        {14.0735e6, 14.0745e6, 4, "14.0735 14.0740 14.0745 MHz"},
        {14.0725e6, 14.0755e6, 3, "14.073 14.074 14.075 MHz"},
        {96.6e6, 99.6e6, 6, "97.0 97.5 98.0 98.5 99.0 99.5 MHz"},
        {0.0, 24e3, 5, "0 5 10 15 20 kHz"},
        {0.0, 2e3, 4, "0.0 0.5 1.0 1.5 2.0 kHz"},
        {-100.0, 100.0, 4, "-100 -50 0 50 100 Hz"},
        {-1.5e6, 1.5e6, 3, "-1 0 1 MHz"},
        {0.1e3, 0.9e3, 4, "200 400 600 800 Hz"},
        {5e6, 5e6, 4, " MHz"},
    };
    for (const auto &[low, high, most, text] : cases)
        EXPECT_EQ(written(AxisTicks::frequencies(low, high, most)), QString(text));
}

TEST(AxisTicksTest, TimesAndLevelsKeepTheirOwnSteps)
{
    EXPECT_EQ(written(AxisTicks::times(0.0, 30.0, 3)), "0 10 20 30 s");
    EXPECT_EQ(written(AxisTicks::times(0.0, 600.0, 5)), "0 2 4 6 8 10 min");
    EXPECT_EQ(written(AxisTicks::times(0.0, 5.0 * 3600.0, 5)), "0 1 2 3 4 5 h");
    EXPECT_EQ(written(AxisTicks::levels(-120.0, 0.0, 7)), "-120 -100 -80 -60 -40 -20 0 dB");
}
} // namespace
