// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frame/DeviceNotice.h"
#include "window/frame/MainWindow.h"

#include "library/DeviceKind.h"

#include "radio/TestRadio.h"

#include <QAction>
#include <QElapsedTimer>
#include <QMenu>
#include <gtest/gtest.h>

namespace
{
using namespace host;

constexpr int kSearchMs = 20000; // two looks at the bus, on a busy machine

/// See DeviceKindTest: what lies at the place for the USB is a stand-in.
TEST(DeviceMenuTest, ChoosesTheReceiverAndTellsWhenThereIsNone)
{
    test::TestRadio bench("band centre=7.1M noise=-140\n");
    ASSERT_TRUE(bench.start()) << bench.radio().error().toStdString();
    Radio &radio = bench.radio();
    MainWindow window(radio, bench.path("bookmarks.csv"));
    window.show();
    const auto *notice = window.findChild<DeviceNotice *>();
    EXPECT_FALSE(notice->isVisible());

    const auto entry = [&](const QString &text) -> QAction * {
        for (QMenu *menu : window.findChildren<QMenu *>())
            emit menu->aboutToShow();
        for (QAction *action : window.findChildren<QAction *>())
            if (action->text() == text)
                return action;
        return nullptr;
    };
    const auto becomes = [&](auto condition) {
        QElapsedTimer clock;
        for (clock.start(); !condition(); test::serve(10))
            if (clock.hasExpired(kSearchMs))
                return false;
        return true;
    };
    const QString usb = findDeviceKind("usb")->name();
    ASSERT_TRUE(entry(usb));
    EXPECT_FALSE(entry(usb)->isChecked());
    entry(usb)->trigger();
    EXPECT_TRUE(entry(usb)->isChecked());
    EXPECT_FALSE(radio.virtualReceiver());
    EXPECT_TRUE(becomes([&] { return radio.state() == Radio::State::Receiving; }));
    EXPECT_FALSE(notice->isVisible());

    entry(radio.ownLibrary())->trigger();
    EXPECT_TRUE(becomes([&] { return radio.state() == Radio::State::Receiving; }));
    ASSERT_TRUE(radio.virtualReceiver());
    radio.virtualReceiver()->fault("unplug@0");
    EXPECT_TRUE(becomes([&] { return notice->isVisible(); }));
    radio.virtualReceiver()->fault("replug@0");
    EXPECT_TRUE(becomes([&] { return !notice->isVisible(); }));
}
} // namespace
