// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineTest.h"

#include <future>

namespace
{
using namespace std::chrono_literals;
} // namespace

using EngineSpectrumTest = EngineTest;

TEST_F(EngineSpectrumTest, ARefusedJobEndsTheThreadAndTheEngineStartsAgain)
{
    std::promise<void> gate;
    const auto opened = gate.get_future().share();
    long posted = 0;
    std::atomic<long> done = 0;
    const auto wait = [opened, &done] { opened.wait(), ++done; };
    EXPECT_THROW(for (;; ++posted) bridge.threadPool().post(wait), std::runtime_error);
    auto samples = test::noise(kBlock, 1);
    const auto playUntil = [&](auto condition) {
        const auto end = std::chrono::steady_clock::now() + 60s;
        while (!condition() && std::chrono::steady_clock::now() < end) {
            engine.processIQ(samples);
            std::this_thread::sleep_for(1ms);
        }
        return condition();
    };
    recordAudio();
    recordIq();
    start();
    ASSERT_TRUE(playUntil([&] { return engine.stopping(); })) << "by itself, when a frame is due";
    EXPECT_TRUE(engine.hasThread());
    engine.setSampleRate(48000.0); // hangs if the engine mutex was left locked
    start();
    EXPECT_TRUE(engine.stopping()) << "no start before a close";
    const long processed = sensors.blocks;
    engine.processIQ(samples);

    engine.close();
    EXPECT_EQ(sensors.blocks, processed);
    EXPECT_EQ(iq.size(), std::size_t((processed + 1) * kBlock)) << "ends after the IQ server";
    EXPECT_EQ(soundCard.size(), std::size_t(processed * kBlock)) << "and ahead of the receiver";
    EXPECT_EQ(bridge.sink.switches, (std::vector<bool>{true, false}));
    gate.set_value();
    while (done < posted)
        std::this_thread::yield();
    start();
    EXPECT_TRUE(playUntil([&] { return sensors.blocks > processed + 50; }));
    EXPECT_FALSE(engine.stopping());
}
