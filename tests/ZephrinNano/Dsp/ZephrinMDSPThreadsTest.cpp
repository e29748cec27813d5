// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineTest.h"

#include "AllocationCounter.h"
#include "vm_library/source/log/Log.h"

#include <QTemporaryDir>

#include <atomic>
#include <ctime>

using EngineThreadsTest = EngineTest;

// Fails under the thread sanitizer if a setter meets the engine outside the mutex.
TEST_F(EngineThreadsTest, SettersCallbacksAndReaderRunBesideTheStream)
{
    std::atomic<bool> quit = false;
    engine.setIqServer(&iqServer);
    engine.setAudioServer(&audioServer);
    start();
    std::vector<std::thread> threads;
    threads.emplace_back([&] {
        auto frame = test::noise(84, 1);
        while (!quit) {
            engine.processIQ(frame);
            std::this_thread::yield();
        }
    });
    for (auto callback : {&ZephrinMDSP::soundCardIO, &ZephrinMDSP::vacIO, &ZephrinMDSP::lineOutIO})
        threads.emplace_back([&, callback] {
            std::vector<float> in;
            std::vector<float> out(400);
            while (!quit) {
                (engine.*callback)(in, out, 0, 2);
                std::this_thread::yield();
            }
        });

    threads.emplace_back([&] {
        std::vector<float> line;
        std::vector<float> waterfall;
        while (!quit) {
            engine.readSpectrum(0, line, waterfall);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });

    QTemporaryDir folder;
    const double rates[] = {48000.0, 192000.0};
    for (int round = 0; round < 60; ++round) {
        const double rate = rates[round % 2];
        engine.setSampleRate(rate);
        engine.setSampleRateSC(round % 3 == 0 ? 96000.0 : 48000.0);
        engine.setModulation(0, DspCore::Modulation(round % 9));
        engine.setBandFilterIf(0, -100.0 * round, 3000.0);
        engine.setDownConverter(0, 1000.0 * round);
        engine.setRit(0, 0, 10.0 * round);
        engine.setDds(0, 7e6 + round);
        engine.setSsbFilterTaps(400 + round);
        engine.setAmFilterTaps(500 + round);
        engine.setDigFilterTaps(600 + round);
        engine.setCwFilterTaps(700 + round);
        engine.setDiglOffset(2000 + round);
        engine.setDiguOffset(1000 + round);
        engine.setAgcMode(DspCore::AgcMode(round % 6));
        engine.setAgcAttack(DspCore::AgcMode::Fast, 1.0 + round);
        engine.setMainVolume(-round);
        engine.setVolume(0, 1, -round);
        engine.setBalance(0, 0, round);
        engine.setMute(0, 1, round % 2 == 0);
        engine.setMainMute(round % 4 == 0);
        engine.setChannelEnable(0, 1, round % 2 == 0);
        engine.setLineOutSampleRate(rate);
        engine.setVacSampleRate(rate);
        engine.setLineOutEnable(round % 3 != 0);
        if (round % 3 == 0)
            engine.vacOpen();
        else
            engine.vacClose();
        engine.setIqServer(round % 2 == 0 ? &iqServer : nullptr);
        engine.setAudioServer(round % 2 == 0 ? nullptr : &audioServer);
        engine.setSensors(&sensors);
        engine.setSpectrumSize(256u << round % 5);
        engine.setSpectrumAveraging(unsigned(round % 10));
        engine.setSpectrumAveragingType(unsigned(round % 4));
        engine.setSpectrumUpdateTime(10);
        engine.setWaterfallFilter(round % 2 == 0);
        engine.setHideSpectrumSlopes(round % 3 == 0);
        engine.iqRecorder()->setFrequency(round);
        if (engine.isIqRecording())
            engine.iqRecorderStop();
        engine.setIQFormat(vm::file::IQFile::Format(round % 3));
        EXPECT_TRUE(engine.iqRecorderStart(folder.path() + "/iq.wav"));
        EXPECT_TRUE(waitForBlocks(sensors.blocks + 2));
        if (round % 4 == 3) {
            engine.close();
            start();
        }
    }
    quit = true;
    for (std::thread &thread : threads)
        thread.join();
}

// The setters work under the engine's mutex; at 3.072 MHz the reader's ring holds 42 ms. What they
// take of the processor is what the engine stands still on a machine that is not busy.
TEST_F(EngineThreadsTest, AChangeOfFilterHoldsTheEngineForMoments)
{
    constexpr double kLongestHoldMs = 10.0;
    engine.setSampleRate(3.072e6);
    engine.setModulation(0, DspCore::Modulation::USB);
    engine.setBandFilterIf(0, 300.0, 2700.0);
    start();
    std::atomic<bool> quit = false;
    std::thread reader([&] {
        auto frame = test::noise(84, 1);
        while (!quit) {
            engine.processIQ(frame);
            std::this_thread::yield();
        }
    });
    const auto heldMs = [](auto change) {
        timespec before{};
        timespec after{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &before);
        change();
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &after);
        return 1e3 * double(after.tv_sec - before.tv_sec)
            + 1e-6 * double(after.tv_nsec - before.tv_nsec);
    };
    EXPECT_TRUE(waitForBlocks(100));
    for (const int taps : {1570, 4000, 8000}) {
        EXPECT_LT(heldMs([&] { engine.setSsbFilterTaps(taps); }), kLongestHoldMs) << taps;
        EXPECT_LT(heldMs([&] { engine.setBandFilterIf(0, 200.0, 3000.0); }), kLongestHoldMs)
            << taps;
        EXPECT_TRUE(waitForBlocks(sensors.blocks + 10));
    }
    EXPECT_LT(heldMs([&] { engine.setSpectrumSize(16384); }), kLongestHoldMs);
    quit = true;
    reader.join();
}

TEST_F(EngineThreadsTest, TheSteadyStreamAllocatesNothing)
{
    if (!test::countsAllocations())
        return; // a sanitizer owns the allocator
    QTemporaryDir folder;
    ASSERT_TRUE(engine.iqRecorderStart(folder.path() + "/iq.wav"));
    engine.setSpectrumUpdateTime(10);
    engine.setIqServer(&iqServer);
    engine.setAudioServer(&audioServer);
    engine.vacOpen();
    engine.lineoutOpen();
    constexpr int kWarmUp = 40;
    constexpr int kCounted = 100;
    long before = 0;
    long after = 0;
    sensors.onStereo = [&](uint, bool) { // engine thread, whose allocations count
        if (sensors.blocks == kWarmUp)
            before = test::allocationsOfThisThread();
        if (sensors.blocks == kWarmUp + kCounted)
            after = test::allocationsOfThisThread();
        // Slow enough for a frame of the panorama now and then, and for the recorder's file.
        std::this_thread::sleep_for(std::chrono::microseconds(500));
    };
    start();
    playTone(kWarmUp + kCounted + 1, 0.1);
    engine.close();

    // The one line of log that each block writes has a cost inside Qt.
    const auto line = [] { vm::log::debug("write audio to audioServer(), ", 512ul, " samples"); };
    line();
    const long start = test::allocationsOfThisThread();
    line();
    const long perLine = test::allocationsOfThisThread() - start;
    EXPECT_GT(perLine, 0) << "the counter does not count";
    EXPECT_EQ(after - before, kCounted * perLine);
}
