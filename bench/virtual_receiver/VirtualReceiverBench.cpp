// SPDX-License-Identifier: GPL-3.0-or-later
#include "FramePacker.h"
#include "scenes/band/BuiltinScene.h"
#include "scenes/band/NoiseGenerator.h"
#include "scenes/recordings/MemorySource.h"
#include "scenes/recordings/RecordedScene.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>
#include <vector>

namespace
{
std::vector<vr::Sample> noise(std::size_t length)
{
    std::vector<vr::Sample> samples(length);
    vr::NoiseGenerator generator;
    generator.setSigma(0.1);
    generator.add(samples.data(), length);
    return samples;
}

void BM_FramePacker(benchmark::State &state) // real time at the highest rate: 3.072e6 items/s
{
    const auto samples = noise(84 * 64);
    vr::FramePacker packer;
    std::uint8_t frame[vr::FramePacker::kFrameSize];
    for (auto _ : state) {
        for (std::size_t i = 0; i < samples.size(); i += 84) {
            packer.pack(&samples[i], 1.0, false, frame);
            benchmark::ClobberMemory();
        }
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(samples.size()));
}
BENCHMARK(BM_FramePacker);

void render(benchmark::State &state, vr::Scene &scene, double rateHz, double tunedHz)
{
    std::vector<vr::Sample> block(16 * 84);
    scene.start(rateHz, tunedHz);
    for (auto _ : state) {
        scene.render(block.data(), block.size());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(block.size()));
}

// Real time is as many items/s as the argument, the device's sample rate.
void BM_BuiltinScene(benchmark::State &state)
{
    const auto scene = vr::makeBuiltinScene();
    render(state, *scene, double(state.range(0)), 7.1e6);
}
BENCHMARK(BM_BuiltinScene)->Arg(48000)->Arg(192000)->Arg(3072000);

// A recording at the first rate in a stream at the second, which is real time in items/s; the third
// is how far from its middle the device is tuned.
void BM_RecordedScene(benchmark::State &state)
{
    const double sourceHz = double(state.range(0));
    vr::RecordedScene scene(
        std::make_unique<vr::MemorySource>(noise(100000), sourceHz, 7.1e6), true);
    render(state, scene, double(state.range(1)), 7.1e6 + double(state.range(2)));
}
BENCHMARK(BM_RecordedScene)
    ->Args({3072000, 3072000, 0})
    ->Args({3072000, 3072000, 10000})
    ->Args({192000, 3072000, 10000})
    ->Args({250000, 2560000, 10000})
    ->Args({3072000, 48000, 10000})
    ->Args({12001, 192000, 0});
} // namespace
