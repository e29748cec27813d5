// SPDX-License-Identifier: GPL-3.0-or-later
// Real time needs 48e3 items/s and channel; the blanker runs at the IQ rate, up to 3.072e6.
#include "../RunBlocks.h"
#include "DspCore/noise/AutoNotchFilter.h"
#include "DspCore/noise/NoiseBlanker.h"
#include "DspCore/noise/NoiseReduction.h"

namespace
{
template <typename Predictor>
void BM_Predictor(benchmark::State &state) // second argument: taps, 257 being the most
{
    Predictor predictor;
    predictor.setTaps(int(state.range(1)));
    predictor.setEnable(true);
    bench::runBlocks(
        state, [&](auto &block) { predictor.process(block.data(), int(block.size())); });
}

void BM_NoiseBlanker(benchmark::State &state) // arguments two and three: NB1, NB2
{
    DspCore::NoiseBlanker blanker;
    blanker.setEnableNb1(state.range(1) != 0);
    blanker.setEnableNb2(state.range(2) != 0);
    bench::runBlocks(state, [&](auto &block) { blanker.process(block.data(), int(block.size())); });
}
} // namespace

BENCHMARK_TEMPLATE(BM_Predictor, DspCore::NoiseReduction)
    ->ArgNames({"", "taps"})
    ->ArgsProduct({{8, 512}, {45, 257}});
BENCHMARK_TEMPLATE(BM_Predictor, DspCore::AutoNotchFilter)
    ->ArgNames({"", "taps"})
    ->ArgsProduct({{8, 512}, {60, 257}});
BENCHMARK(BM_NoiseBlanker)->ArgNames({"", "nb1", "nb2"})->ArgsProduct({{512}, {0, 1}, {0, 1}});
