// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Numbers.h"

#include <gtest/gtest.h>

namespace
{
TEST(NumbersTest, TakesFrequenciesAsPeopleWriteThem)
{
    const std::pair<const char *, double> cases[] = {{"14074000", 14074000.0}, {"7.1e6", 7.1e6},
        {"192k", 192000.0}, {"192K", 192000.0}, {"-2.7k", -2700.0}, {"0", 0.0}, {"1e3k", 1e6}};
    for (const auto &[text, value] : cases) {
        const auto number = host::parseNumber(text);
        ASSERT_TRUE(number) << text;
        EXPECT_DOUBLE_EQ(*number, value) << text;
    }
}

TEST(NumbersTest, RefusesWhatIsNoFiniteNumber)
{
    for (const char *text : {"", "k", "M", "7.1MHz", "7,1", "7.1 M", " 7", "7 ", "nan", "inf",
             "-inf", "1e400", "1e308M", "0x10", "1k2", "7m", "--5"})
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
