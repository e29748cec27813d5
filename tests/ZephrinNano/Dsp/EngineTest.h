// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Dsp/ZephrinMDSP.h"
#include "support/Signals.h"
#include "support/TestHost.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <vector>

/// An engine between a stand-in host and the test, which plays the reader. The receiver runs at
/// 48 kHz in and out unless told otherwise.
class EngineTest : public ::testing::Test
{
protected:
    static constexpr int kBlock = EngineLimits::kBlock;
    static constexpr int kChunk = EngineLimits::kOutletChunk;

    explicit EngineTest(std::shared_ptr<ZephrinMFunctions> functions = nullptr)
        : engine(bridge.threadPool(), bridge, std::move(functions))
    {
        engine.setSampleRate(48000.0);
        engine.setSensors(&sensors);
        // Per block on the default category; the tests that want to see it capture it.
        previousHandler = qInstallMessageHandler([](auto, auto &, auto &) {});
    }
    ~EngineTest() override
    {
        engine.close();
        qInstallMessageHandler(previousHandler);
    }

    void start() { engine.open(vm::thread::jthread::Priority::Highest); }

    bool waitForBlocks(long count, bool wake = true)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (sensors.blocks < count) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            // A wake-up that comes while the engine works is lost; here no next block repeats it.
            if (wake)
                engine.wake();
            std::this_thread::yield();
        }
        return true;
    }

    /// Hands a stream to the engine in read blocks and waits for each.
    void play(std::vector<COMPLEX> stream)
    {
        for (std::size_t at = 0; at + kBlock <= stream.size(); at += kBlock) {
            const long before = sensors.blocks;
            engine.processIQ(gsl::span<COMPLEX>(stream.data() + at, kBlock));
            ASSERT_TRUE(waitForBlocks(before + 1));
        }
    }

    void playTone(int blocks, double amplitude, double hz = 1000.0)
    {
        play(test::tone(blocks * kBlock, hz / 48000.0, amplitude, 0.0, toneAt));
        toneAt += blocks * kBlock;
    }

    /// All that the sound card is offered through the bridge, and all that the audio server gets.
    void recordAudio()
    {
        engine.setAudioServer(&audioServer);
        bridge.sink.onWrite = [this](COMPLEX32 *pairs, int count) {
            for (const COMPLEX32 *pair = pairs; pair != pairs + count; ++pair)
                soundCard.push_back({pair->re, pair->im});
        };
        audioServer.onWrite = [this](COMPLEX *pairs, int count) {
            vacSource.insert(vacSource.end(), pairs, pairs + count);
        };
    }

    /// What the host's IQ server gets: the stream after blanker and notches.
    void recordIq()
    {
        iqServer.onWrite = [this](COMPLEX *block, int count) {
            iq.insert(iq.end(), block, block + count);
        };
        engine.setIqServer(&iqServer);
    }

    test::TestBridge bridge;
    test::TestIqServer iqServer;
    test::TestAudioServer audioServer;
    test::TestSensors sensors;
    ZephrinMDSP engine;
    std::vector<COMPLEX> soundCard;
    std::vector<COMPLEX> vacSource;
    std::vector<COMPLEX> iq;
    std::vector<float> noInput;
    long long toneAt = 0;
    QtMessageHandler previousHandler = nullptr;
};
