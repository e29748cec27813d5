// SPDX-License-Identifier: GPL-3.0-or-later
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

/// Every mode, with all tools off or all on at the longest lengths that their controls allow.
void BM_ReceiverMode(benchmark::State &state)
{
    const auto rate = double(state.range(0));
    const bool tools = state.range(2) != 0;
    DspCore::Receiver receiver;
    setUp(receiver, rate, Modulation(state.range(1)));
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
    run(state, receiver, rate);
}
} // namespace

BENCHMARK(BM_Receiver)
    ->ArgNames({"rate", "vfob"})
    ->ArgsProduct({{192000, 1536000, 3072000}, {0, 1}});
BENCHMARK(BM_ReceiverMode)
    ->ArgNames({"rate", "mode", "tools"})
    ->ArgsProduct({{192000, 3072000}, benchmark::CreateDenseRange(0, 10, 1), {0, 1}});
