// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineTest.h"

#include <cmath>
#include <limits>
#include <string>

using EngineStreamTest = EngineTest;

TEST_F(EngineStreamTest, FadesInFromSilenceAtEveryStart)
{
    recordIq();
    const std::vector<COMPLEX> stream(2 * kBlock, COMPLEX{1.0, -0.5});
    for (int round = 0; round < 2; ++round) {
        iq.clear();
        start();
        play(stream);
        engine.close();
        ASSERT_EQ(iq.size(), stream.size());
        for (int n = 0; n < int(iq.size()); ++n) {
            // Step response of the smoother; single precision ends at unity after a few samples.
            const double gain = n < 8 ? double(float(1.0 - std::pow(0.05, n + 1))) : 1.0;
            ASSERT_EQ(iq[n].re, gain) << n;
            ASSERT_EQ(iq[n].im, -0.5 * iq[n].re) << n;
        }
    }
}

TEST_F(EngineStreamTest, ReadBlockFollowsTheSoundCardRateFromTheNextStartOn)
{
    const struct
    {
        double rate;
        int block;
    } rows[] = {{192000.0, 512}, {44100.0, 4096}};
    std::vector<int> blocks;
    iqServer.onWrite = [&](COMPLEX *, int count) { blocks.push_back(count); };
    engine.setIqServer(&iqServer);
    auto samples = test::noise(4096, 1);
    for (const auto &row : rows) {
        engine.setSampleRateSC(row.rate);
        start();
        engine.setSampleRateSC(32000.0); // a rate of block 512 that comes too late
        blocks.clear();
        const long before = sensors.blocks;
        engine.processIQ(gsl::span<COMPLEX>(samples.data(), std::size_t(row.block - 1)));
        engine.processIQ(gsl::span<COMPLEX>(samples.data(), std::size_t(4097 - row.block)));
        ASSERT_TRUE(waitForBlocks(before + 4096 / row.block)) << row.rate;
        engine.close();
        EXPECT_EQ(blocks, std::vector<int>(4096 / row.block, row.block)) << row.rate;
    }
}

TEST_F(EngineStreamTest, StepsOfABlockRunInOrder)
{
    std::vector<std::string> steps;
    const auto step = [&](const char *name) { steps.emplace_back(name); };
    iqServer.onWrite = [&](COMPLEX *, int) {
        steps.clear();
        step(engine.iqBuffer()->count() == (sensors.blocks + 1) * kBlock ? "tap" : "no tap yet");
        step("iq server");
    };
    bridge.sink.onWrite = [&](COMPLEX32 *, int) { step("sound card"); };
    audioServer.onWrite = [&](COMPLEX *, int) { step("audio server"); };
    sensors.onAdc = [&](uint, float, float) { step("adc"); };
    sensors.onDbm = [&](uint, uint channel, float) { step(channel == 0 ? "dbm a" : "dbm b"); };
    sensors.onStereo = [&](uint, bool) { step("stereo"); };
    engine.setIqServer(&iqServer);
    engine.setAudioServer(&audioServer);
    start();
    play(test::noise(4 * kBlock, 2));
    EXPECT_EQ(steps,
        (std::vector<std::string>{
            "tap", "iq server", "sound card", "audio server", "adc", "dbm a", "dbm b", "stereo"}));
}

/// Half of the smallest normal number is zero to the engine, and to nobody else.
TEST_F(EngineStreamTest, DenormalNumbersAreZeroOnTheEngineThread)
{
    volatile double smallest = std::numeric_limits<double>::min();
    volatile double tiny = 1e-310;
    double result = -1.0;
    double operand = -1.0;
    iqServer.onWrite = [&](COMPLEX *, int) {
        result = smallest * 0.5;
        operand = tiny * 1e10;
    };
    engine.setIqServer(&iqServer);
    start();
    play(test::noise(kBlock, 9));
    EXPECT_EQ(result, 0.0);
    EXPECT_EQ(operand, 0.0);
}

TEST_F(EngineStreamTest, AStoppedEngineTakesNothingAndARestartIsClean)
{
    auto samples = test::noise(kBlock, 5);
    engine.lineoutOpen();
    engine.vacOpen();
    engine.processIQ(samples); // never opened
    start();
    EXPECT_EQ(engine.iqBuffer()->count(), 0u);
    playTone(100, 0.5);
    EXPECT_GT(engine.iqBuffer()->count(), 0u);
    engine.processIQ(gsl::span<COMPLEX>(samples.data(), kBlock - 1)); // left in the ring
    engine.close();
    engine.processIQ(samples);

    // What was ready to play stays unheard.
    const std::vector<float> silence(512, 0.0f), untouched(512, 1.0f);
    const auto expectSilence = [&](auto callback, bool answer) {
        auto out = untouched;
        EXPECT_EQ((engine.*callback)(noInput, out, 0, 2), answer);
        EXPECT_EQ(out, answer ? silence : untouched);
    };
    expectSilence(&ZephrinMDSP::soundCardIO, true);
    expectSilence(&ZephrinMDSP::vacIO, true);
    expectSilence(&ZephrinMDSP::lineOutIO, false);

    const long before = sensors.blocks;
    start();
    EXPECT_EQ(engine.iqBuffer()->count(), 0u);
    expectSilence(&ZephrinMDSP::lineOutIO, false);
    engine.processIQ(gsl::span<COMPLEX>(samples.data(), kBlock - 1));
    engine.wake();
    engine.close();
    EXPECT_EQ(sensors.blocks, before) << "a sample of the last run was still there";
    EXPECT_EQ(bridge.sink.switches, (std::vector<bool>{true, false, true, false}));
}
