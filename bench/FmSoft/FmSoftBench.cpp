// SPDX-License-Identifier: GPL-3.0-or-later
// Real time needs 192e3 items/s.
#include "FmSoft/FmDecode.h"
#include "FmSoft/PilotPhaseLock.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>

namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kIfRate = 192000.0;

SampleVector multiplex(std::size_t length)
{
    SampleVector samples(length);
    for (std::size_t n = 0; n < length; ++n) {
        const double t = double(n) / kIfRate;
        samples[n] = 0.4 * std::sin(kTwoPi * 1000.0 * t) + 0.1 * std::sin(kTwoPi * 19000.0 * t);
    }
    return samples;
}

void BM_FmDecoder(benchmark::State &state) // second argument: stereo
{
    FmDecoder decoder(
        kIfRate, 0.0, 48000.0, state.range(1) != 0, 50.0, 100000.0, 75000.0, 15000.0, 1);
    IQSampleVector block;
    double phase = 0.0;
    for (const double x : multiplex(std::size_t(state.range(0)))) {
        phase += kTwoPi * 75000.0 / kIfRate * x;
        block.push_back({float(0.2 * std::cos(phase)), float(0.2 * std::sin(phase))});
    }
    SampleVector audio;
    for (auto _ : state) {
        decoder.process(block, audio);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_PilotPhaseLock(benchmark::State &state)
{
    PilotPhaseLock pilot(19000.0 / kIfRate, 50.0 / kIfRate, 0.04);
    const SampleVector baseband = multiplex(std::size_t(state.range(0)));
    SampleVector harmonic;
    for (auto _ : state) {
        pilot.process(baseband, harmonic);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_AudioResampler(benchmark::State &state) // 4: on the samples; 4.354: between them
{
    const double factor = kIfRate / double(state.range(1));
    DownsampleFilter filter(192, 15000.0 / kIfRate, factor, false);
    const SampleVector baseband = multiplex(std::size_t(state.range(0)));
    SampleVector audio;
    for (auto _ : state) {
        filter.process(baseband, audio);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
} // namespace

BENCHMARK(BM_FmDecoder)->ArgNames({"", "stereo"})->ArgsProduct({{32, 512, 4096}, {0, 1}});
BENCHMARK(BM_PilotPhaseLock)->Arg(512);
BENCHMARK(BM_AudioResampler)->ArgNames({"", "to"})->ArgsProduct({{512}, {48000, 44100}});
