// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/ZephrinMDSP.h"
#include "support/Signals.h"
#include "support/TestHost.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <thread>

namespace
{
constexpr int kBlock = EngineLimits::kBlock;
constexpr int kBlocks = 200; // per round; they fit into the input ring

/// Reader to meters, with the hand-over to the engine thread, the taps open and channel B running.
/// Real time at an IQ rate is that many items per second. The message handler is silent, so the log
/// line of each block is composed and not printed.
void BM_Engine(benchmark::State &state)
{
    qInstallMessageHandler([](auto, auto &, auto &) {});
    test::TestBridge bridge;
    test::TestSensors sensors;
    ZephrinMDSP engine(bridge.threadPool(), bridge, nullptr);
    engine.setSampleRate(double(state.range(0)));
    engine.setModulation(0, DspCore::Modulation::USB);
    engine.setSensors(&sensors);
    engine.vacOpen();
    engine.lineoutOpen();
    engine.open(vm::thread::jthread::Priority::Highest);
    auto block = test::noise(kBlock, /*seed*/ 1);
    long due = 0;
    for (auto _ : state) {
        for (int i = 0; i < kBlocks; ++i)
            engine.processIQ(block); // copied by the ring, so the input stays as it is
        due += kBlocks;
        while (sensors.blocks < due) {
            engine.wake();
            std::this_thread::sleep_for(std::chrono::microseconds(50));
        }
    }
    engine.close();
    state.SetItemsProcessed(state.iterations() * kBlocks * kBlock);
}
BENCHMARK(BM_Engine)->Arg(192000)->Arg(3072000)->UseRealTime();
} // namespace
