// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestRadio.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include "support/Signals.h"

#include <QSignalSpy>
#include <cmath>
#include <gtest/gtest.h>

namespace
{
using namespace host;

// Carriers far enough from each other that each is alone in a filter.
constexpr char kBand[] = "band centre=7.1M noise=-140\n"
                         "station frequency=7.105M level=-40 mode=carrier\n"
                         "station frequency=7.095M level=-60 mode=carrier\n"
                         "station frequency=14.1M level=-50 mode=carrier\n";
constexpr double kHeardDb = -40.0;  // what is in tune is above, whatever the gain control does
constexpr double kSilentDb = -75.0; // what is not is below

constexpr int kSettleMs = 1200; // the gain control after the first sample

class RadioTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_bench.start({"--tune", "7104000", "--center", "7100000", "--mode", "USB"}))
            << m_bench.radio().error().toStdString();
        test::serve(kSettleMs);
    }

    Radio &radio() { return m_bench.radio(); }

    test::TestRadio m_bench{kBand};
};
} // namespace

TEST_F(RadioTest, HearsWhatItIsTunedTo)
{
    EXPECT_GT(m_bench.toneDb(1000.0), kHeardDb);
    const double strongDbm = radio().readings().signalDbm;
    radio().setFrequency(7.1035e6);
    EXPECT_GT(m_bench.toneDb(1500.0), kHeardDb);
    EXPECT_LT(m_bench.toneDb(1000.0), kSilentDb);
    // RIT is added to what the dial shows.
    radio().setValue(Dial::Rit, 300.0);
    radio().setOn(Switch::Rit, true);
    EXPECT_GT(m_bench.toneDb(1200.0), kHeardDb);
    EXPECT_EQ(radio().frequencyHz(), 7.1035e6);
    EXPECT_EQ(radio().receivedHz(), 7.1038e6);
    radio().setFrequency(7.094e6);
    constexpr double kNearDb = 0.5;
    const auto weakerDb = [&] { return strongDbm - radio().readings().signalDbm; };
    for (int i = 0; i < 50 && std::abs(weakerDb() - 20.0) > kNearDb; ++i) // the meter is slow
        test::serve(100);
    EXPECT_NEAR(weakerDb(), 20.0, kNearDb); // as the band has it
}

TEST_F(RadioTest, BeyondTheBandTheCenterFollows)
{
    const QSignalSpy moved(&radio(), &Radio::centerChanged);
    radio().setFrequency(7.12e6);
    EXPECT_EQ(moved.count(), 0);
    radio().setFrequency(14.099e6);
    EXPECT_EQ(moved.count(), 1);
    EXPECT_GT(m_bench.toneDb(1000.0), kHeardDb);
    // And the other way round: the frequency is taken along.
    EXPECT_TRUE(radio().setCenter(14.3e6));
    EXPECT_NEAR(radio().frequencyHz(), 14.3e6 - 0.46 * 192000.0, 1.0);
}
