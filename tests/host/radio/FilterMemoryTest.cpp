// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestRadio.h"

#include <gtest/gtest.h>

namespace
{
using namespace host;
using Edges = FilterMemory::Edges;
} // namespace

TEST(FilterMemoryTest, EdgesObeyTheDevicesTables)
{
    test::TestRadio bench("band centre=7.1M noise=-140\n");
    ASSERT_TRUE(bench.start());
    FilterMemory filters(bench.radio().functions());
    struct Case
    {
        Mode mode;
        Edges asked;
        Edges got;
    };
    const Case cases[] = {
        {Mode::USB, {300, 2400}, {300, 2400}}, {Mode::USB, {-500, 12000}, {0, 10000}},
        {Mode::USB, {2000, 1000}, {2000, 2020}}, {Mode::LSB, {-2400, 300}, {-2400, 0}},
        {Mode::AM, {-1000, 5000}, {-3000, 3000}}, // the width counts
        {Mode::CW, {-1, 1}, {-10, 10}}, {Mode::AM, {-50000, 50000}, {-18000, 18000}},
        {Mode::DRM, {-1000, 1000}, {-5000, 5000}}, // fixed
    };
    for (const Case &c : cases) {
        filters.setEdges(c.mode, c.asked);
        EXPECT_EQ(filters.edges(c.mode), c.got) << c.mode << ' ' << c.asked.lowHz;
    }
    EXPECT_TRUE(filters.moveHigh(Mode::AM, 4000));
    EXPECT_EQ(filters.edges(Mode::AM), (Edges{-4000, 4000}));
}

TEST(FilterMemoryTest, FiltersComeAndGoAndAreKept)
{
    test::TestRadio bench("band centre=7.1M noise=-140\n");
    ASSERT_TRUE(bench.start());
    FilterMemory filters(bench.radio().functions());
    EXPECT_EQ(filters.filters(Mode::USB).size(), 9);
    EXPECT_FALSE(filters.add(Mode::USB)); // one of the table
    filters.setEdges(Mode::USB, {100, 2450});
    EXPECT_EQ(filters.chosen(Mode::USB), -1);
    EXPECT_TRUE(filters.add(Mode::USB));
    EXPECT_EQ(filters.filters(Mode::USB)[filters.chosen(Mode::USB)].name, "2.35K");
    EXPECT_TRUE(filters.remove(Mode::USB, 0));

    QSettings settings(bench.path("filters.ini"), QSettings::IniFormat);
    filters.writeSettings(settings);
    settings.setValue("Filters/CW/filters", QStringList{"nonsense", "-75:75", "3:"});
    FilterMemory read(bench.radio().functions());
    read.readSettings(settings);
    EXPECT_EQ(read.edges(Mode::USB), (Edges{100, 2450}));
    ASSERT_EQ(read.filters(Mode::USB).size(), 9);
    EXPECT_EQ(read.filters(Mode::USB)[0].name, "2K");
    ASSERT_EQ(read.filters(Mode::CW).size(), 1);
    EXPECT_EQ(read.filters(Mode::CW)[0].name, "150");
    for (int i = 0; i < 20; ++i)
        read.remove(Mode::USB, 0);
    EXPECT_EQ(read.filters(Mode::USB).size(), 1);
    read.restore(Mode::USB);
    EXPECT_EQ(read.filters(Mode::USB).size(), 9);
}
