// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineTest.h"

#include "AllocationCounter.h"
#include "vm_library/source/log/Log.h"

#include <QTemporaryDir>

#include <atomic>

using EngineThreadsTest = EngineTest;

// Fails under the thread sanitizer if a setter meets the engine outside the mutex: those that the
// soak does not turn, as the plugin stops the stream for them or never calls them.
TEST_F(EngineThreadsTest, SettersRunBesideTheStream)
{
    std::atomic<bool> quit = false;
    start();
    std::thread reader([&] {
        auto frame = test::noise(84, 1);
        while (!quit) {
            engine.processIQ(frame);
            std::this_thread::yield();
        }
    });
    for (int round = 0; round < 12; ++round) {
        const bool odd = round % 2 != 0;
        engine.setSampleRate(odd ? 192000.0 : 48000.0);
        engine.setSampleRateSC(round % 3 == 0 ? 96000.0 : 48000.0);
        engine.setLineOutSampleRate(48000.0 + round);
        engine.setIqServer(odd ? nullptr : &iqServer);
        engine.setAudioServer(odd ? nullptr : &audioServer);
        EXPECT_TRUE(waitForBlocks(sensors.blocks + 2));
        if (round % 4 == 3) {
            engine.close();
            start();
        }
    }
    quit = true;
    reader.join();
}

TEST_F(EngineThreadsTest, TheSteadyStreamAllocatesNothingInAnyMode)
{
    if (!test::countsAllocations())
        return;                 // a sanitizer owns the allocator
    constexpr int kWarmUp = 20; // blocks
    constexpr int kCounted = 40;
    QTemporaryDir folder;
    ASSERT_TRUE(engine.iqRecorderStart(folder.path() + "/iq.wav"));
    engine.setSpectrumUpdateTime(10);
    engine.setIqServer(&iqServer);
    engine.setAudioServer(&audioServer);
    engine.vacOpen();
    engine.lineoutOpen();
    engine.setChannelEnable(0, 1, true);
    for (const auto tool :
        {&ZephrinMDSP::setNr, &ZephrinMDSP::setAnf, &ZephrinMDSP::setApf, &ZephrinMDSP::setDse,
            &ZephrinMDSP::setNb1, &ZephrinMDSP::setNb2, &ZephrinMDSP::setEqualizerEnable})
        (engine.*tool)(0, true);
    engine.setEnableCTCSS(0, true);
    long block = 0; // of the mode
    long before = 0;
    long after = 0;
    long lines = 0; // logged between the two
    static std::atomic<long> logged;
    const auto handler = qInstallMessageHandler([](auto, auto &, auto &) { ++logged; });
    sensors.onStereo = [&](uint, bool) { // engine thread, whose allocations count
        if (++block == kWarmUp) {
            logged = 0;
            before = test::allocationsOfThisThread();
        }
        if (block == kWarmUp + kCounted) {
            after = test::allocationsOfThisThread();
            lines = logged;
        }
        // Slow enough for a frame of the panorama now and then, and for the recorder's file.
        std::this_thread::sleep_for(std::chrono::microseconds(500));
    };

    // The one line of log that each block writes has a cost inside Qt.
    const auto line = [] { vm::log::debug("write audio to audioServer(), ", 512ul, " samples"); };
    line();
    const long first = test::allocationsOfThisThread();
    line();
    const long perLine = test::allocationsOfThisThread() - first;
    EXPECT_GT(perLine, 0) << "the counter does not count";

    for (int mode = int(DspCore::Modulation::AM); mode <= int(DspCore::Modulation::DRM); ++mode) {
        engine.setModulation(0, DspCore::Modulation(mode));
        lines = 0;
        // On a busy machine the recorder may lose a block, which is logged, too: then once more.
        for (int tries = 0; tries < 20 && lines != kCounted; ++tries) {
            block = 0;
            start();
            playTone(kWarmUp + kCounted, 0.1);
            engine.close();
        }
        EXPECT_EQ(after - before, kCounted * perLine) << "mode " << mode;
    }
    qInstallMessageHandler(handler);
}
