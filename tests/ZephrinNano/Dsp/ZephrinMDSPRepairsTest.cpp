// SPDX-License-Identifier: GPL-3.0-or-later
// That a named repair arrives; what it does is tested at the block that it is in.
#include "EngineTest.h"
#include "support/LogCapture.h"

#include <atomic>
#include <cmath>
#include <future>

namespace
{
class EngineRepairsTest : public EngineTest, public testing::WithParamInterface<bool>
{
protected:
    /// Ahead of all else, for the half of the tests that are repaired.
    void ask(const char *name)
    {
        QStringList unknown;
        engine.setRepairs(
            Repairs::named(isRepaired() ? QStringList(name) : QStringList(), unknown));
        ASSERT_TRUE(unknown.isEmpty());
    }
    static bool isRepaired() { return GetParam(); }
};

INSTANTIATE_TEST_SUITE_P(Repair, EngineRepairsTest, testing::Bool(),
    [](const auto &row) { return row.param ? "On" : "Off"; });

TEST_P(EngineRepairsTest, TheMeterRestarts)
{
    float dbm = 0.0f;
    sensors.onDbm = [&dbm](uint, uint, float value) { dbm = value; };
    ask("meter");
    start();
    play(std::vector<COMPLEX>(20 * kBlock, COMPLEX{0.0, 0.0}));
    playTone(4, 0.1);
    EXPECT_EQ(std::isfinite(dbm), isRepaired());
}

TEST_P(EngineRepairsTest, ARefusedFrameOfThePanoramaLeavesTheReception)
{
    ask("spectrum");
    std::promise<void> gate;
    const auto opened = gate.get_future().share();
    std::atomic<long> done = 0;
    long posted = 0;
    const auto wait = [opened, &done] { opened.wait(), ++done; };
    while (bridge.threadPool().tryPost(wait))
        ++posted;
    test::LogCapture log;
    start();
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
    auto block = test::noise(kBlock, 1);
    while (std::chrono::steady_clock::now() < end && !engine.stopping()) {
        engine.processIQ(block);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_EQ(engine.stopping(), !isRepaired());
    EXPECT_EQ(log.warnings().filter("takes no jobs").size(), isRepaired() ? 1 : 0);
    engine.close();
    gate.set_value();
    while (done < posted)
        std::this_thread::yield();
}

TEST_P(EngineRepairsTest, TheChosenAgcModeHoldsFromTheFirstBlock)
{
    constexpr int kBlocks = 100;
    constexpr double kSameDb = 0.1;
    constexpr double kDifferentDb = 4.0; // at least: a fixed gain of 20 dB clips
    ask("agc");
    recordAudio();
    engine.setModulation(0, DspCore::Modulation::USB);
    engine.setAgcGain(0, 20);
    const auto levelDb = [this] {
        start();
        soundCard.clear();
        playTone(kBlocks, 1.5); // the gain comes down quickly
        engine.close();
        return test::decibels(test::rms({soundCard.end() - 8 * kBlock, soundCard.end()}));
    };
    const double onDb = levelDb();
    engine.setAgcDecay(DspCore::AgcMode::Off, 100.0); // the page tells its times: no choice
    EXPECT_NEAR(levelDb(), onDb, kSameDb);
    engine.setAgcMode(DspCore::AgcMode::Off);
    EXPECT_EQ(levelDb() > onDb + kDifferentDb, isRepaired());
}
} // namespace
