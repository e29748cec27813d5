// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/driver/FrameParser.h"
#include "Control/driver/HardwareZephrinNANO.h"
#include "Dsp/ZephrinMDSP.h"
#include "ZephrinNano/Control/driver/FrameStream.h"
#include "support/TestHost.h"

#include <benchmark/benchmark.h>
#include <random>

// Bytes are those of the read windows. Real time at the highest rate: 18.7e6 bytes/s.
namespace
{
// What the bytes of the samples are: a loud band, or a quiet one, whose upper bytes are 0, 1 or -1
// and so look like parts of a marker more often.
enum Content { Loud, Quiet };

std::vector<int8_t> window(std::size_t bytes, Content content)
{
    auto block = test::frames(bytes / test::kFrame);
    std::mt19937 random(1);
    for (std::size_t i = 0; i < block.size(); ++i) {
        if (i % test::kFrame >= 8)
            block[i] = content == Loud ? int8_t(random()) : int8_t(int(random() % 3) - 1);
    }
    return block;
}

void BM_FindHeaders(benchmark::State &state)
{
    const auto block = window(std::size_t(state.range(0)), Content(state.range(1)));
    test::TestBridge bridge;
    HardwareZephrinNANO driver(std::make_shared<ZephrinMDSP>(bridge.threadPool(), bridge, nullptr));
    for (auto _ : state)
        benchmark::DoNotOptimize(driver.findHeaders(block));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

// The reader's work on one window but the hand-over.
void BM_Framing(benchmark::State &state)
{
    const auto source = window(std::size_t(state.range(0)), Content(state.range(1)));
    auto block = source;
    std::vector<COMPLEX> iq(source.size() / FrameParser::kFrameBytes * EngineLimits::kFrameSamples);
    for (auto _ : state) {
        const auto headers = FrameParser::findHeaders(block);
        const auto peak = FrameParser::decode(
            block, headers, 0, iq.data(), [](std::size_t) {}, 1.5);
        benchmark::DoNotOptimize(peak);
        const std::size_t tail = FrameParser::keepTail(block, headers);
        std::copy_n(source.begin(), tail, block.begin()); // the tail has been moved there
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void sizes(benchmark::internal::Benchmark *bench)
{
    for (const int rateCode : {4, 5, 6, 7}) { // the four windows there are
        for (const int content : {Loud, Quiet})
            bench->Args({std::int64_t(EngineLimits::readWindow(rateCode)), content});
    }
}
BENCHMARK(BM_FindHeaders)->Apply(sizes);
BENCHMARK(BM_Framing)->Apply(sizes);
} // namespace
