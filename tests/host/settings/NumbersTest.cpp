// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Numbers.h"

#include <gtest/gtest.h>

namespace
{
TEST(NumbersTest, RefusesWhatIsNoFiniteNumber)
{
    for (const char *text : {"", "k", "7.1MHz", "7,1", " 7", "nan", "-inf", "1e308M", "1k2", "7m"})
        EXPECT_FALSE(host::parseNumber(text)) << text;
}

TEST(NumbersTest, WritesWhatItCanReadBack)
{
    const std::pair<double, QString> cases[] = {
        {14074000.0, "14.074M"}, {-2700.0, "-2.7k"}, {300.0, "300"}, {7.100001e6, "7.100001M"}};
    for (const auto &[value, text] : cases) {
        EXPECT_EQ(host::formatNumber(value), text);
        EXPECT_DOUBLE_EQ(*host::parseNumber(text), value);
    }
    EXPECT_EQ(host::formatHertz(14074000.0), "14.074 MHz");
    EXPECT_EQ(host::formatHertz(-300.0), "-300 Hz");
}
} // namespace
