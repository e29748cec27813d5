// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/Receiver.h"
#include "support/Signals.h"

#include <benchmark/benchmark.h>

namespace
{
/// Whole receiver, both channels, in the blocks of the engine; real time needs rate items/s.
void BM_Receiver(benchmark::State &state)
{
    constexpr int kBlock = 512;
    const auto rate = double(state.range(0));
    DspCore::Receiver receiver;
    receiver.setInputSampleRate(rate);
    receiver.setFilterTaps(1570);
    receiver.setBandFilterIf(0, 300.0, 3000.0);
    receiver.setModulation(DspCore::Modulation::USB);
    receiver.setEnableVfob(state.range(1) != 0);
    receiver.clear();
    auto block = test::noise(kBlock, /*seed*/ 1);
    for (auto _ : state) {
        receiver.process(block.data(), kBlock);
        receiver.buffer().clear();
        receiver.vac().clear();
        receiver.lineout().clear();
    }
    state.SetItemsProcessed(state.iterations() * kBlock);
    // CPU seconds per second of signal.
    state.counters["load"] = benchmark::Counter(double(state.iterations()) * kBlock / rate,
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_Receiver)
    ->ArgNames({"rate", "vfob"})
    ->ArgsProduct({{192000, 1536000, 3072000}, {0, 1}});
} // namespace
