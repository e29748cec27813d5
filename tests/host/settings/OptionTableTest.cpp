// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/OptionTable.h"

#include "settings/UsageError.h"

#include <gtest/gtest.h>

namespace
{
TEST(OptionTableTest, EveryRowIsWhole)
{
    QStringList names;
    for (const auto &row : host::optionTable())
        names += row.name;
    EXPECT_EQ(names.removeDuplicates(), 0);
    for (const auto &row : host::optionTable()) {
        QStringList others = row.serves;
        for (const char *other : {row.needs, row.storedBy})
            if (other)
                others += other;
        for (const QString &other : qAsConst(others))
            EXPECT_TRUE(names.contains(other)) << row.name << ": " << qPrintable(other);
        EXPECT_EQ(bool(row.argument), bool(row.value.read)) << row.name;
        const bool acts = row.keep || row.stored || row.setUp || row.begin;
        EXPECT_TRUE(acts || QString(row.name) == "headless") << row.name;
    }
}

TEST(OptionTableTest, AValueIsReadWithinItsRangeOnly)
{
    const struct
    {
        host::ValueCheck check;
        QStringList good;
        QStringList bad;
    } cases[] = {
        {host::number(-0.5, 2e3), {"-0.5", "2k", "1e-3"}, {"-0.51", "2000.1", "", "x", "nan"}},
        {host::wholeNumber(1, 257), {"1", "257", "1e2"}, {"0", "258", "1.5", "one"}},
        {host::oneOf({"Off", "med"}), {"off", "MED"}, {"", "me", "long"}},
    };
    for (const auto &c : cases) {
        for (const QString &text : c.good)
            EXPECT_NO_THROW(c.check.read(text)) << qPrintable(text);
        for (const QString &text : c.bad)
            EXPECT_THROW(c.check.read(text), host::UsageError) << qPrintable(text);
    }
    EXPECT_EQ(host::wholeNumber(0, 10).read("1e1"), QVariant(10));
    EXPECT_EQ(host::oneOf({"Off", "med"}).read("OFF"), QVariant("Off"));
    EXPECT_EQ(host::oneOf({"Off", "long", "med"}).range, ": Off, long or med");
}
} // namespace
