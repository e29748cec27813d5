// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/Repairs.h"

#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace
{
TEST(RepairsTest, ANameOfTheTableSwitchesOnItsRepairAlone)
{
    EXPECT_TRUE(Repairs().names().isEmpty());
    QStringList all = Repairs::all().names();
    EXPECT_EQ(all.size(), int(kRepairTable.size()));
    EXPECT_EQ(all.removeDuplicates(), 0);
    for (const RepairRow &row : kRepairTable) {
        QStringList unknown;
        const Repairs one = Repairs::named({row.name}, unknown);
        EXPECT_EQ(one.names(), QStringList(row.name));
        EXPECT_TRUE(one.has(row.repair) && unknown.isEmpty()) << row.name;
    }
    QStringList unknown;
    EXPECT_EQ(Repairs::named({"x", "stream", "Stream"}, unknown).names(), QStringList("stream"));
    EXPECT_EQ(unknown, (QStringList{"x", "Stream"}));
}

TEST(RepairsTest, TheGuideTellsOfEveryRow)
{
    QFile guide(REPAIRS_GUIDE);
    ASSERT_TRUE(guide.open(QIODevice::ReadOnly));
    QStringList told;
    const QRegularExpression heading("^## `(\\w+)`$", QRegularExpression::MultilineOption);
    for (auto i = heading.globalMatch(guide.readAll()); i.hasNext();)
        told += i.next().captured(1);
    EXPECT_EQ(told, Repairs::all().names());
}
} // namespace
