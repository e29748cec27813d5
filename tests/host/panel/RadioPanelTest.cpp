// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/TestRadio.h"

#include "memory/RadioMemory.h"
#include "panel/ControlPanel.h"

#include <QApplication>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

namespace
{
using host::Mode;

class NoSender : public host::SenderKeyToSystem
{
public:
    bool send(const QString &keys) override { return fail("no desktop for " + keys); }
};

// Every wire to the radio.
TEST(RadioPanelTest, TurnsTheRadio)
{
    test::TestRadio bench("band centre=7.1M noise=-140\n");
    ASSERT_TRUE(bench.start({"--tune", "7104000", "--mode", "USB"}));
    host::Radio &radio = bench.radio();
    host::RadioMemory memory(radio, bench.path("b.csv"));
    NoSender sender;
    host::RadioPanel panel(radio, memory, sender);

    radio.setStep(100);
    panel.tune(-5);
    EXPECT_EQ(radio.frequencyHz(), 7.1035e6);
    radio.setValue(host::Dial::Volume, -20.0);
    panel.turn(host::Dial::Volume, 3);
    EXPECT_EQ(radio.value(host::Dial::Volume), -17.0);
    panel.toggle(host::Switch::Mute);
    EXPECT_TRUE(radio.isOn(host::Switch::Mute));
    panel.stepStep(1);
    EXPECT_EQ(radio.step(), 500);
    panel.setMode(Mode::CW);
    EXPECT_EQ(radio.mode(), Mode::CW);
    const int modes = radio.functions().listModes().size();
    panel.stepMode(1);
    EXPECT_NE(radio.mode(), Mode::CW);
    panel.stepMode(modes - 1);
    EXPECT_EQ(radio.mode(), Mode::CW) << "round the end";
    panel.chooseFilter(0);
    EXPECT_EQ(radio.filters().chosen(Mode::CW), 0);
    panel.stepFilter(-1);
    EXPECT_EQ(radio.filters().chosen(Mode::CW), radio.filters().filters(Mode::CW).size() - 1);
    panel.chooseFilter(100);
    radio.setFilterEdges({-123.0, 123.0});
    panel.stepFilter(1);
    EXPECT_EQ(radio.filters().chosen(Mode::CW), 0);
    panel.stepBand(1);
    EXPECT_EQ(memory.currentBand(), memory.bands().neighbour(7.1035e6, 1));
    panel.goToBand(memory.bands().bands()[memory.bands().bandOf(7.1e6)].name.toLower());
    EXPECT_EQ(radio.frequencyHz(), 7.1035e6);
    panel.toggleVfo();
    EXPECT_EQ(radio.active(), host::VfoId::B);
    panel.swapVfos();
    EXPECT_EQ(radio.frequencyHz(), 7.1035e6);
    panel.toggleSplit();
    EXPECT_TRUE(radio.isSplit());
    panel.toggleLock();
    EXPECT_TRUE(radio.isLocked());
    panel.togglePower();
    EXPECT_FALSE(radio.isPowered());
    QSignalSpy messages(&panel, &host::RadioPanel::message);
    panel.send("F5");
    panel.goToBand("13 m");
    ASSERT_EQ(messages.size(), 2);
    EXPECT_EQ(messages[0].first(), "no desktop for F5");
}

TEST(ControlPanelTest, AMappingReachesTheRadioAndItsMistakesThePerson)
{
    test::TestRadio bench("band centre=7.1M noise=-140\n");
    ASSERT_TRUE(bench.start());
    host::RadioMemory memory(bench.radio(), bench.path("b.csv"));
    host::ControlPanel panel(bench.radio(), memory);
    QSignalSpy messages(&panel, &host::ControlPanel::message);
    QFile mapping(bench.path("panel.conf"));
    ASSERT_TRUE(mapping.open(QIODevice::WriteOnly));
    mapping.write("shortcut F7 mute\nshortcut F8 dance\n");
    mapping.close();
    QWidget window;
    window.show();
    QApplication::setActiveWindow(&window);
    panel.load(mapping.fileName(), &window);
    QTest::keyClick(&window, Qt::Key_F7);
    EXPECT_TRUE(bench.radio().isOn(host::Switch::Mute));
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].first().toString().contains("line 2"));
}
} // namespace
