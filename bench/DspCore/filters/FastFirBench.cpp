// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/FastFir32f.h"
#include "support/Signals.h"

#include <algorithm>
#include <benchmark/benchmark.h>

using DspCore::ConvolutionForm;

// Real time at the highest rate: the pre-filter (500 taps) wants 3.072e6 items/s for each of two
// channels in blocks of 512; the band filter behind the decimator (1570 taps) 48e3 items/s, which
// come as 8 samples a call.
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

void BM_FastFirByFft(benchmark::State &state)
{
    filterBlocks(state, ConvolutionForm::Fft);
}

void BM_FastFirDirect(benchmark::State &state)
{
    filterBlocks(state, ConvolutionForm::Direct);
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
    for (const auto &[taps, lengths] : {std::pair{500, std::vector{8, 64, 128, 256, 512}},
             {1570, {8, 64, 128, 256, 512}}, {7935, {8, 64, 128, 256, 512}}}) {
        for (const int length : lengths)
            bench->Args({taps, length});
    }
}
} // namespace

BENCHMARK(BM_FastFirChosen)->Apply(sizes);
BENCHMARK(BM_FastFirByFft)->Apply(sizes);
BENCHMARK(BM_FastFirDirect)->Apply(sizes);
BENCHMARK(BM_FastFir32f)->Args({500, 512})->Args({1570, 512})->Args({1570, 8});
BENCHMARK(BM_FastFirInit)->Arg(500)->Arg(1570);
