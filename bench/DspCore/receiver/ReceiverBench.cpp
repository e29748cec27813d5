// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/NoDenormals.h"
#include "DspCore/receiver/Receiver.h"
#include "support/Signals.h"

#include <benchmark/benchmark.h>

namespace
{
using DspCore::Modulation;

constexpr int kBlock = 512; // of the engine

/// Noise at full scale through the whole receiver; real time needs rate items/s. "load" is CPU
/// seconds per second of signal.
void run(benchmark::State &state, DspCore::Receiver &receiver, double rate)
{
    receiver.clear();
    auto block = test::noise(kBlock, /*seed*/ 1);
    for (auto _ : state) {
        receiver.process(block.data(), kBlock);
        receiver.buffer().clear();
        receiver.vac().clear();
        receiver.lineout().clear();
    }
    state.SetItemsProcessed(state.iterations() * kBlock);
    state.counters["load"] = benchmark::Counter(double(state.iterations()) * kBlock / rate,
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void setUp(DspCore::Receiver &receiver, double rate, Modulation mode)
{
    receiver.setInputSampleRate(rate);
    receiver.setFilterTaps(1570);
    const double low = mode == Modulation::WFM ? -80000.0 : 300.0;
    receiver.setBandFilterIf(0, low, mode == Modulation::WFM ? 80000.0 : 3000.0);
    receiver.setModulation(mode);
}

void BM_Receiver(benchmark::State &state)
{
    const auto rate = double(state.range(0));
    DspCore::Receiver receiver;
    setUp(receiver, rate, Modulation::USB);
    receiver.setEnableVfob(state.range(1) != 0);
    run(state, receiver, rate);
}

/// All tools at the longest lengths that their controls allow, and channel B.
void setTools(DspCore::Receiver &receiver, bool tools)
{
    receiver.setEnableVfob(tools);
    receiver.setNr(tools);
    receiver.setNrTaps(tools ? 257 : 45);
    receiver.setAnf(tools);
    receiver.setAnfTaps(tools ? 257 : 60);
    receiver.setApf(tools);
    receiver.setDse(tools);
    receiver.setDseQuality(tools ? 250 : 200);
    receiver.setEqualizerEnable(tools);
    receiver.setEqualizerGains(QVector<int>(18, 6));
    receiver.setEnableCTCSS(tools);
    receiver.setSqlEnable(0, tools);
}

/// Every mode, with all tools off or all on.
void BM_ReceiverMode(benchmark::State &state)
{
    const auto rate = double(state.range(0));
    DspCore::Receiver receiver;
    setUp(receiver, rate, Modulation(state.range(1)));
    setTools(receiver, state.range(2) != 0);
    run(state, receiver, rate);
}

/// Every mode with all tools, as the engine's thread reckons: on a signal, and on what is left when
/// it has gone. The time of a block must not depend on it.
void BM_ReceiverSilence(benchmark::State &state)
{
    constexpr double kRate = 192000.0;
    constexpr int kSeconds = 30; // of zeros after the signal, before the measurement
    const DspCore::NoDenormals scope;
    DspCore::Receiver receiver;
    setUp(receiver, kRate, Modulation(state.range(0)));
    setTools(receiver, true);
    receiver.clear();
    auto block = test::noise(kBlock, /*seed*/ 1);
    const auto play = [&] {
        receiver.process(block.data(), kBlock);
        receiver.buffer().clear();
        receiver.vac().clear();
        receiver.lineout().clear();
    };
    for (int i = 0; i < 1000; ++i)
        play();
    const double level[] = {1.0, 0.0, 1e-310}; // by input
    for (COMPLEX &sample : block)
        sample = {level[state.range(1)] * sample.re, level[state.range(1)] * sample.im};
    for (int i = 0; state.range(1) != 0 && i < kSeconds * int(kRate) / kBlock; ++i)
        play();
    for (auto _ : state)
        play();
    state.SetItemsProcessed(state.iterations() * kBlock);
}
} // namespace

BENCHMARK(BM_Receiver)
    ->ArgNames({"rate", "vfob"})
    ->ArgsProduct({{192000, 1536000, 3072000}, {0, 1}});
BENCHMARK(BM_ReceiverMode)
    ->ArgNames({"rate", "mode", "tools"})
    ->ArgsProduct({{192000, 3072000}, benchmark::CreateDenseRange(0, 10, 1), {0, 1}});
BENCHMARK(BM_ReceiverSilence)
    ->ArgNames({"mode", "input"}) // 0 signal, 1 zeros, 2 denormal numbers
    ->ArgsProduct({benchmark::CreateDenseRange(0, 10, 1), {0, 1, 2}})
    ->Iterations(1000); // a second round would begin with the silence again
