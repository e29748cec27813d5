// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/FastFir32f.h"
#include "support/Signals.h"

#include <algorithm>
#include <benchmark/benchmark.h>

using DspCore::ConvolutionForm;

// Real time: the band filter (1570 taps) wants 48e3 items/s for each of two channels, which come as
// 512 samples a call at a device rate of 48 kHz, 128 at 192 kHz, 8 at 3.072 MHz; the wide band
// filter of wide FM up to 3.072e6 items/s in blocks of 512.
namespace
{
void filterBlocks(benchmark::State &state, ConvolutionForm form)
{
    const int taps = int(state.range(0));
    const auto source = test::noise(int(state.range(1)), 1);
    auto block = source;
    DspCore::FastFir fir;
    fir.setForm(form);
    fir.init(-0.1, 0.2, taps);
    for (auto _ : state) {
        std::copy(source.begin(), source.end(), block.begin());
        fir.process(block);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(1));
}

void BM_FastFirChosen(benchmark::State &state)
{
    filterBlocks(state, ConvolutionForm::Chosen);
}

void BM_FastFirByOverlapAdd(benchmark::State &state)
{
    filterBlocks(state, ConvolutionForm::OverlapAdd);
}

void BM_FastFir32f(benchmark::State &state)
{
    const auto noise = test::noise(int(state.range(1)), 1);
    std::vector<COMPLEX32> source;
    for (const COMPLEX &sample : noise)
        source.push_back({float(sample.re), float(sample.im)});
    auto block = source;
    DspCore::FastFir32f fir;
    fir.init(-0.1, 0.2, int(state.range(0)));
    for (auto _ : state) {
        std::copy(source.begin(), source.end(), block.begin());
        fir.process(block);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(1));
}

void BM_FastFirInit(benchmark::State &state) // a person turns the filter's edge
{
    DspCore::FastFir fir;
    double edge = 0.1;
    for (auto _ : state) {
        edge = edge == 0.1 ? 0.11 : 0.1;
        fir.init(-0.1, edge, int(state.range(0)));
    }
}

void sizes(benchmark::internal::Benchmark *bench)
{
    for (const auto &[taps, lengths] : {std::pair{500, std::vector{8, 10, 32, 64, 128, 256, 512}},
             {1570, {8, 10, 32, 64, 128, 256, 512}}, {7935, {8, 10, 32, 64, 128, 256, 512}}}) {
        for (const int length : lengths)
            bench->Args({taps, length});
    }
}
} // namespace

BENCHMARK(BM_FastFirChosen)->Apply(sizes);
BENCHMARK(BM_FastFirByOverlapAdd)->Apply(sizes);
BENCHMARK(BM_FastFir32f)->Args({500, 512})->Args({1570, 512})->Args({1570, 8});
BENCHMARK(BM_FastFirInit)->Arg(500)->Arg(1570);
