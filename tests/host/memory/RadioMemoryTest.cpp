// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/TestRadio.h"

#include "memory/RadioMemory.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace
{
using host::Mode;
using host::RadioMemory;

class RadioMemoryTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bench.start({"--tune", "7104000", "--mode", "USB"}))
            << bench.radio().error().toStdString();
        memory = std::make_unique<RadioMemory>(bench.radio(), bench.path("b.csv"));
    }

    int band(double hertz) const { return memory->bands().bandOf(hertz); }

    test::TestRadio bench{"band centre=7.1M noise=-140\n"};
    std::unique_ptr<RadioMemory> memory;
};

TEST_F(RadioMemoryTest, EachBandComesBackAsItWasLeft)
{
    host::Radio &radio = bench.radio();
    QSignalSpy bands(memory.get(), &RadioMemory::currentBandChanged);
    const int forty = band(7.1e6);
    const int twenty = band(14.1e6);
    ASSERT_TRUE(forty >= 0 && twenty >= 0 && forty != twenty);
    EXPECT_EQ(band(9e6), -1);
    EXPECT_FALSE(memory->goToBand(-1) || memory->goToBand(1000));

    ASSERT_TRUE(memory->goToBand(twenty));
    test::serve(0);
    EXPECT_EQ(radio.mode(), radio.functions().defaultMode(unsigned(twenty)));
    EXPECT_EQ(memory->currentBand(), twenty);
    const host::Reception left{14.02e6, Mode::CW, -50.0, 50.0};
    radio.setReception(left);
    ASSERT_TRUE(memory->goToBand(forty)); // in the same turn of the event loop
    EXPECT_EQ(radio.frequencyHz(), 7.104e6);
    EXPECT_EQ(radio.mode(), Mode::USB);
    test::serve(0);
    EXPECT_EQ(bands.size(), 2);
    // Outside of all bands nothing is remembered.
    radio.setReception({9.5e6, Mode::AM, -3000.0, 3000.0});
    test::serve(0);
    EXPECT_EQ(bands.last().first().toInt(), -1);

    memory.reset();
    ASSERT_TRUE(bench.restart());
    memory = std::make_unique<RadioMemory>(bench.radio(), bench.path("b.csv"));
    ASSERT_TRUE(memory->goToBand(twenty));
    EXPECT_EQ(bench.radio().reception(), left);
}

TEST_F(RadioMemoryTest, GoesFromBandToBandRoundTheEnd)
{
    const auto &bands = memory->bands();
    const int count = bands.bands().size();
    for (const int direction : {1, -1}) {
        double hertz = 7.1e6;
        QSet<int> seen;
        for (int i = 0; i < count; ++i) {
            const int next = bands.neighbour(hertz, direction);
            hertz = bands.bands()[next].lowHz;
            seen += next;
        }
        EXPECT_EQ(seen.size(), count);
    }
    EXPECT_EQ(bands.neighbour(9e6, 1), band(10.12e6));
    EXPECT_EQ(bands.neighbour(9e6, -1), band(7.1e6));
}

TEST_F(RadioMemoryTest, ABookmarkIsWhatIsHeard)
{
    const host::Bookmark here = memory->here("here");
    memory->bookmarks().add(here);
    EXPECT_TRUE(memory->goTo({"away", {3.7e6, Mode::LSB, -2500.0, -200.0}, ""}));
    EXPECT_EQ(bench.radio().frequencyHz(), 3.7e6);
    bench.radio().setLocked(true);
    EXPECT_FALSE(memory->goTo(here));
    bench.radio().setLocked(false);
    EXPECT_TRUE(memory->goTo(memory->bookmarks().between(7.1e6, 7.1045e6).front()));
    EXPECT_EQ(bench.radio().reception(), here.reception);
}
} // namespace
