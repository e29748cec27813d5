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
        {0.0, 2e3, 4, "0.0 0.5 1.0 1.5 2.0 kHz"},
        {-100.0, 100.0, 4, "-100 -50 0 50 100 Hz"},
        {5e6, 5e6, 4, " MHz"},
    };
    for (const auto &[low, high, most, text] : cases)
        EXPECT_EQ(written(AxisTicks::frequencies(low, high, most)), QString(text));
}
} // namespace
