// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/SoundStream.h"
#include "sound/VariableResampler.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

// Real time is 48000 items/s.
namespace
{
std::vector<float> tone(std::size_t frames)
{
    std::vector<float> samples;
    for (std::size_t i = 0; i < frames; ++i)
        samples.insert(samples.end(), 2, 0.5f * float(std::sin(0.13 * double(i))));
    return samples;
}

void BM_VariableResampler(benchmark::State &state) // at a ratio that moves
{
    const auto source = tone(4096);
    host::VariableResampler resampler([&](float *out, std::size_t frames) {
        std::copy_n(source.begin(), 2 * frames, out);
        return frames;
    });
    std::vector<float> out(2 * std::size_t(state.range(0)));
    double drift = 0.0;
    for (auto _ : state) {
        drift = drift > 400e-6 ? -400e-6 : drift + 1e-6;
        resampler.process(out.data(), out.size() / 2, 1.0 + drift);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_VariableResampler)->Arg(480)->Arg(960);

void BM_SoundStream(benchmark::State &state) // the whole way, a push and a render each round
{
    const auto frames = std::size_t(state.range(0));
    const auto source = tone(frames);
    host::SoundStream stream;
    stream.begin(48000, 0.08);
    for (int i = 0; i < 10; ++i)
        stream.push(source.data(), frames);
    std::vector<float> out(2 * frames);
    for (auto _ : state) {
        stream.push(source.data(), frames);
        stream.render(out.data(), frames, 0.08);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_SoundStream)->Arg(480)->Arg(960);
} // namespace
