// SPDX-License-Identifier: GPL-3.0-or-later
#include "../RunBlocks.h"
#include "DspCore/fft/FFT64.h"
#include "DspCore/filters/Biquad.h"
#include "DspCore/filters/DcBlock.h"
#include "DspCore/filters/DecimatingFir.h"
#include "DspCore/filters/DownConverter.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/Iir.h"
#include "DspCore/filters/PassBandResampler.h"
#include "DspCore/filters/Resampler.h"
#include "DspCore/filters/Window64.h"

namespace
{
using bench::runBlocks;

constexpr int kWideTaps = 1537;

void BM_CopyAlone(benchmark::State &state) // is part of every figure below
{
    runBlocks(state, [](auto &) {});
}

void BM_FFT64(benchmark::State &state)
{
    DspCore::FFT64 fft;
    fft.init(int(state.range(0)));
    runBlocks(state, [&](auto &block) {
        fft.process(block.data(), int(block.size()), DspCore::FftType::Forward);
    });
}

void BM_Window64(benchmark::State &state)
{
    DspCore::Window64 window;
    window.init(int(state.range(0)), DspCore::Window::BlackmanNuttall);
    runBlocks(state, [&](auto &block) { window.process(block.data(), int(block.size())); });
}

void BM_DownConverter(benchmark::State &state) // real time at the highest rate: 3.072e6 items/s
{
    DspCore::DownConverter mixer;
    mixer.setOsc(0.1234);
    runBlocks(state, [&](auto &block) { mixer.process(block.data(), int(block.size())); });
}

void BM_Resampler(benchmark::State &state) // likewise at 1/64; 48e3 items/s at 147/160
{
    DspCore::Resampler resampler;
    resampler.init(int(state.range(1)), int(state.range(2)));
    std::vector<COMPLEX> out(SIGNAL_MAX_SIZE);
    int outLength = 0;
    runBlocks(state, [&](auto &block) {
        resampler.process(block.data(), int(block.size()), out.data(), outLength);
    });
}

// Real time at a device rate of `down` / `up` times 48 kHz: that rate, for each of two channels.
void BM_DecimatingFir(benchmark::State &state)
{
    DspCore::DecimatingFir fir;
    const int up = int(state.range(1));
    const int down = int(state.range(2));
    fir.init(21.0 / 48.0 * up / down, 500, up, down);
    std::vector<COMPLEX> out(SIGNAL_MAX_SIZE);
    int outLength = 0;
    runBlocks(state,
        [&](auto &block) { fir.process(block.data(), int(block.size()), out.data(), outLength); });
}

void BM_BandLimitAndResampler(benchmark::State &state) // what it stands for
{
    DspCore::FastFir limit;
    DspCore::Resampler resampler;
    const int up = int(state.range(1));
    const int down = int(state.range(2));
    limit.init(-21.0 / 48.0 * up / down, 21.0 / 48.0 * up / down, 500);
    resampler.init(up, down);
    std::vector<COMPLEX> out(SIGNAL_MAX_SIZE);
    int outLength = 0;
    runBlocks(state, [&](auto &block) {
        limit.process(block);
        resampler.process(block.data(), int(block.size()), out.data(), outLength);
    });
}

void ratios(benchmark::internal::Benchmark *bench)
{
    for (const int down : {1, 2, 4, 8, 16, 32, 40, 64})
        bench->Args({512, 1, down});
    bench->Args({512, 3, 160});
}

// The way into wide FM. Real time at a device rate of `down` times 192 kHz: that rate.
void BM_PassBandResampler(benchmark::State &state)
{
    DspCore::PassBandResampler resampler;
    const int down = int(state.range(1));
    resampler.setRatio(1, down);
    resampler.setBand(-0.45 / down, 0.45 / down, kWideTaps);
    std::vector<COMPLEX> out(SIGNAL_MAX_SIZE);
    int outLength = 0;
    runBlocks(state, [&](auto &block) {
        const int length = int(block.size());
        std::copy(block.begin(), block.end(), resampler.room(length));
        resampler.process(length, out.data(), outLength);
    });
}

void BM_PassBandAndResampler(benchmark::State &state) // what it stands for
{
    DspCore::FastFir band;
    DspCore::Resampler resampler;
    const int down = int(state.range(1));
    band.init(-0.45 / down, 0.45 / down, kWideTaps);
    resampler.init(1, down);
    std::vector<COMPLEX> out(SIGNAL_MAX_SIZE);
    int outLength = 0;
    runBlocks(state, [&](auto &block) {
        band.process(block);
        resampler.process(block.data(), int(block.size()), out.data(), outLength);
    });
}

void BM_ResamplerClear(benchmark::State &state)
{
    DspCore::Resampler resampler;
    resampler.init(1, 4);
    for (auto _ : state) {
        resampler.clear();
        benchmark::ClobberMemory();
    }
}

void BM_DcBlock(benchmark::State &state) // real time: 48e3 items/s
{
    DspCore::DcBlock filter;
    runBlocks(state, [&](auto &block) { filter.process(block.data(), int(block.size())); });
}

void BM_Biquad(benchmark::State &state) // real time: 48e3 items/s for each of 18 bands
{
    DspCore::Biquad filter;
    filter.init(DspCore::Biquad::Type::Peak, 0.02, 2.0, 6.0);
    filter.setEnable(true);
    runBlocks(state, [&](auto &block) { filter.process(block.data(), int(block.size())); });
}

void BM_Iir(benchmark::State &state)
{
    DspCore::Iir filter;
    filter.init(0.1, int(state.range(1)), DspCore::Iir::Type::LowPass);
    runBlocks(state, [&](auto &block) { filter.process(block.data(), int(block.size())); });
}
} // namespace

BENCHMARK(BM_CopyAlone)->Arg(512)->Arg(4096);
BENCHMARK(BM_FFT64)->RangeMultiplier(4)->Range(1024, 65536);
BENCHMARK(BM_Window64)->Arg(1570);
BENCHMARK(BM_DownConverter)->Arg(512)->Arg(4096);
BENCHMARK(BM_Resampler)
    ->Args({512, 1, 64})
    ->Args({512, 3, 160})
    ->Args({512, 1, 4})
    ->Args({512, 1, 1})
    ->Args({512, 147, 160});
BENCHMARK(BM_DecimatingFir)->Apply(ratios);
BENCHMARK(BM_BandLimitAndResampler)->Apply(ratios);
BENCHMARK(BM_PassBandResampler)->ArgsProduct({{512}, {1, 2, 4, 8, 16}});
BENCHMARK(BM_PassBandAndResampler)->ArgsProduct({{512}, {1, 2, 4, 8, 16}});
BENCHMARK(BM_ResamplerClear);
BENCHMARK(BM_DcBlock)->Arg(512);
BENCHMARK(BM_Biquad)->Arg(512);
BENCHMARK(BM_Iir)->Args({512, 2})->Args({512, 10});
