// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options/DeviceMenuZephrinNano.h"
#include "OptionsTest.h"

#include <QLabel>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace
{
using Menu = DeviceMenuZephrinNano;

TEST(DeviceMenuZephrinNanoTest, DevicesAreChosenByPlaceAndKnownByTheirIndex)
{
    Menu menu;
    QSignalSpy changed(&menu, &Menu::deviceChanged);
    auto *box = menu.findChild<QComboBox *>("cbCurrentDevice");
    EXPECT_EQ(menu.deviceId(0), -1);
    menu.setDevices({{3, "A"}, {5, "B"}});
    EXPECT_TRUE(changed.isEmpty());
    menu.setCurrentDevice(1);
    EXPECT_EQ(changed, (QList<QVariantList>{{1}}));
    menu.setDevices({{1, "C"}, {2, "B"}, {7, "A"}});
    EXPECT_EQ(box->currentText(), "B"); // the device stays, wherever it is now
    menu.setDevices({{1, "C"}, {4, "B"}});
    EXPECT_EQ(box->currentData().toInt(), 4);
    for (const auto &[place, id] : {std::pair{0, 1}, {1, 4}, {2, -1}, {-1, -1}})
        EXPECT_EQ(menu.deviceId(place), id);
    menu.setDevices({});
    EXPECT_EQ(box->currentIndex(), -1);
    EXPECT_EQ(changed.size(), 1);
}

TEST(DeviceMenuZephrinNanoTest, StatusIsWrapped)
{
    Menu menu;
    menu.setStatus(u"connected");
    EXPECT_EQ(menu.findChild<QLabel *>("lbConnectStatus")->text(),
        "<html><head/><body><p align=\"left\">connected</p></body></html>");
}
} // namespace
