// SPDX-License-Identifier: GPL-3.0-or-later
// From one device library to another while the program runs. A stand-in for the library of real
// hardware lies where this program looks for the one for the USB; that of the virtual receiver is
// named, so none lies where it would be looked for.
#include "TestRadio.h"

#include "library/DeviceKind.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace
{
using namespace host;

constexpr char kBand[] = "band centre=7.1M noise=-140\n"
                         "station frequency=7.105M level=-40 mode=carrier\n";
constexpr double kHeardDb = -45.0;
constexpr double kSilentDb = -60.0; // voices are in the stand-in's band, but no tone as strong
constexpr int kSearchMs = 20000;    // two looks at the bus, on a busy machine

bool awaits(Radio &radio, Radio::State state)
{
    QElapsedTimer clock;
    for (clock.start(); radio.state() != state; test::serve(10))
        if (clock.hasExpired(kSearchMs))
            return false;
    return true;
}

class DeviceKindTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_bench.start({"--tune", "7104000", "--center", "7100000", "--mode", "USB"}))
            << m_bench.radio().error().toStdString();
    }

    Radio &radio() { return m_bench.radio(); }

    test::TestRadio m_bench{kBand};
};
} // namespace

TEST_F(DeviceKindTest, ChangesWithoutARestart)
{
    const DeviceKind *usb = findDeviceKind("usb");
    EXPECT_GT(m_bench.toneDb(1000.0, 1500), kHeardDb);
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(radio().setDeviceKind(usb)) << radio().error().toStdString();
        ASSERT_TRUE(awaits(radio(), Radio::State::Receiving));
        EXPECT_FALSE(radio().virtualReceiver());
        EXPECT_EQ(radio().sceneName(), "on the air");
        if (round == 1) { // with both loaded
            EXPECT_LT(m_bench.toneDb(1000.0, 1500), kSilentDb);
        }
        EXPECT_TRUE(radio().setDeviceKind(nullptr));
        ASSERT_TRUE(awaits(radio(), Radio::State::Receiving));
        EXPECT_EQ(radio().sceneName(), m_bench.path("test.band"));
    }
    EXPECT_GT(m_bench.toneDb(1000.0, 1500), kHeardDb);
    EXPECT_EQ(radio().settings().value("Radio/device"), usb->key); // kept for the next start
}

TEST_F(DeviceKindTest, OneThatCannotBeHadLeavesAllAsItIs)
{
    const QSignalSpy told(&radio(), &Radio::message);
    EXPECT_FALSE(radio().setDeviceKind(findDeviceKind("virtual")));
    EXPECT_TRUE(radio().error().contains("--device virtual")) << radio().error().toStdString();
    EXPECT_EQ(told.count(), 1);
    EXPECT_EQ(radio().state(), Radio::State::Receiving);
    EXPECT_TRUE(radio().virtualReceiver());
    EXPECT_FALSE(radio().settings().contains("Radio/device"));
}

TEST_F(DeviceKindTest, AReceiverThatIsPulledIsMissedAndTakenAgain)
{
    ASSERT_EQ(radio().virtualReceiver()->fault("unplug@0"), 0);
    ASSERT_TRUE(awaits(radio(), Radio::State::Searching));
    QElapsedTimer clock;
    for (clock.start(); radio().searchText().isEmpty() && !clock.hasExpired(kSearchMs);)
        test::serve(10);
    EXPECT_TRUE(radio().searchText().contains("unplugged")) << radio().searchText().toStdString();
    ASSERT_EQ(radio().virtualReceiver()->fault("replug@0"), 0);
    ASSERT_TRUE(awaits(radio(), Radio::State::Receiving));
    EXPECT_TRUE(radio().searchText().isEmpty());
    EXPECT_GT(m_bench.toneDb(1000.0, 1500), kHeardDb);
}
