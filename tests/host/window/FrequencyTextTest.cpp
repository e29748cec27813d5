// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frequency/FrequencyText.h"

#include <gtest/gtest.h>

TEST(FrequencyTextTest, ReadsWhatPeopleType)
{
    struct Case
    {
        const char *text;
        double hertz; // below 0: no frequency
    };
    for (const Case &c : {Case{"14.074", 14.074e6}, Case{"14,074", 14.074e6},
             Case{"14074k", 14.074e6}, Case{"14074", 14.074e6}, Case{"7100.5", 7.1005e6},
             Case{"7", 7e6}, Case{"14.074.000", 14.074e6}, Case{"137.500 kHz", 137.5e3},
             Case{"145.5 MHz", 145.5e6}, Case{"14074000", 14.074e6}, Case{"500 Hz", 500.0},
             Case{"0.1375", 137.5e3}, Case{"999.999", 999.999e6}, Case{"", -1.0}, Case{"k", -1.0},
             Case{"-7.1", -1.0}, Case{"7.1.2", -1.0}, Case{"7e6", -1.0}, Case{"twenty", -1.0}}) {
        const auto hertz = host::frequencyFrom(c.text);
        EXPECT_EQ(hertz.has_value(), c.hertz >= 0.0) << c.text;
        EXPECT_NEAR(hertz.value_or(c.hertz), c.hertz, 1e-3) << c.text;
    }
    EXPECT_EQ(host::frequencyText(14074000.4), "14.074.000");
    EXPECT_EQ(host::frequencyText(500.0), "500");
}
