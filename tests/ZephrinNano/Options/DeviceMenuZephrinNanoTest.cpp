// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options/DeviceMenuZephrinNano.h"
#include "OptionsTest.h"

#include <QLabel>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace
{
using Menu = DeviceMenuZephrinNano;

TEST(DeviceMenuZephrinNanoTest, SettersTellChangesOnly)
{
    Menu menu;
    std::vector<int> preamp;
    std::vector<int> rate;
    QStringList serial;
    QObject::connect(&menu, &Menu::autoPreampChanged, [&](bool on) { preamp.push_back(on); });
    QObject::connect(&menu, &Menu::sampleRateChanged, [&](int code) { rate.push_back(code); });
    QObject::connect(
        &menu, &Menu::serialChanged, [&](QStringView text) { serial << text.toString(); });
    EXPECT_TRUE(menu.serial().isEmpty());
    for (int twice = 0; twice < 2; ++twice) {
        menu.setAutoPreamp(true);
        menu.setSampleRate(HardwareZephrinNANO::Rate2560000);
        menu.setSerial(u"ZN000001");
    }
    EXPECT_EQ(test::shown(menu, "chbPreamp"), 1.0);
    EXPECT_EQ(test::shown(menu, "cbSampleRate"), 7.0);
    test::turn(menu, "chbPreamp", 0); // by the user
    test::turn(menu, "cbSampleRate", 2);
    EXPECT_FALSE(menu.autoPreamp());
    EXPECT_EQ(menu.sampleRate(), HardwareZephrinNANO::Rate192000);
    EXPECT_EQ(preamp, (std::vector{1, 0}));
    EXPECT_EQ(rate, (std::vector{7, 2}));
    EXPECT_EQ(serial, QStringList{"ZN000001"});
}

TEST(DeviceMenuZephrinNanoTest, DevicesAreChosenByPlaceAndKnownByTheirIndex)
{
    Menu menu;
    QSignalSpy changed(&menu, &Menu::deviceChanged);
    auto *box = menu.findChild<QComboBox *>("cbCurrentDevice");
    EXPECT_EQ(menu.deviceId(0), -1);
    menu.setDevices({{3, "A"}, {5, "B"}});
    EXPECT_EQ(box->itemData(1).toInt(), 5);
    EXPECT_TRUE(changed.isEmpty());
    menu.setCurrentDevice(1);
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0], 1);
    menu.setDevices({{1, "C"}, {2, "B"}, {7, "A"}});
    EXPECT_EQ(box->currentText(), "B"); // the device stays, wherever it is now
    menu.setDevices({{1, "C"}, {4, "B"}});
    EXPECT_EQ(box->currentData().toInt(), 4);
    for (const auto &[place, id] : {std::pair{0, 1}, {1, 4}, {2, -1}, {-1, -1}})
        EXPECT_EQ(menu.deviceId(place), id);
    menu.setDevices({{1, "C"}});
    EXPECT_EQ(box->currentText(), "C");
    menu.setDevices({});
    EXPECT_EQ(box->currentIndex(), -1);
    EXPECT_EQ(changed.size(), 1);
}

TEST(DeviceMenuZephrinNanoTest, StatusIsWrapped)
{
    Menu menu;
    const auto *label = menu.findChild<QLabel *>("lbConnectStatus");
    EXPECT_EQ(label->text(), "<html><head/><body><p align=\"left\">disconnect</p></body></html>");
    menu.setStatus(u"connected");
    EXPECT_EQ(label->text(), "<html><head/><body><p align=\"left\">connected</p></body></html>");
}

TEST(DeviceMenuZephrinNanoTest, WheelTurnsNoBox)
{
    Menu menu;
    menu.setDevices({{3, "A"}, {5, "B"}});
    menu.setCurrentDevice(1);
    menu.setSampleRate(HardwareZephrinNANO::Rate384000);
    for (auto *box : menu.findChildren<QComboBox *>()) {
        const int before = box->currentIndex();
        EXPECT_FALSE(test::turnWheel(box));
        EXPECT_EQ(box->currentIndex(), before);
    }
    EXPECT_EQ(menu.sampleRate(), HardwareZephrinNANO::Rate384000);
}
} // namespace
