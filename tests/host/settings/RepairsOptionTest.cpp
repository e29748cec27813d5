// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/CommandLine.h"

#include "host_interfaces/Repairs.h"

#include <gtest/gtest.h>

namespace
{
auto read(const QStringList &more)
{
    return host::readCommandLine(QStringList{"velmora-host", "--headless"} + more);
}

TEST(RepairsOptionTest, AsksForAllUnlessToldOtherwise)
{
    const QStringList all = Repairs::all().names();
    const struct
    {
        QStringList options;
        QStringList asked;
    } rows[] = {{{}, all}, {{"--repairs", "all"}, all}, {{"--repairs", "none"}, {}},
        {{"--repairs", "stream"}, {"stream"}}};
    for (const auto &row : rows) {
        const auto result = read(row.options);
        const auto *settings = std::get_if<host::HostSettings>(&result);
        ASSERT_TRUE(settings) << row.options.join(' ').toStdString();
        EXPECT_EQ(settings->repairs, row.asked);
    }
}

TEST(RepairsOptionTest, AnUnknownNameIsRefusedWithTheListOfNames)
{
    for (const char *list : {"x", "stream,x", "", "All"}) {
        const auto result = read({"--repairs", list});
        const auto *error = std::get_if<host::UsageError>(&result);
        ASSERT_TRUE(error) << list;
        EXPECT_TRUE(error->text.contains(Repairs::all().names().join(", "))) << list;
    }
}
} // namespace
