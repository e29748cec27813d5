// SPDX-License-Identifier: GPL-3.0-or-later
// Frames come at most every 10 ms, so real time needs 100 frames/s: 0.41e6 bins/s at a size of 4096
// and 6.6e6 at 65536. Blocks of 512 come 6000 times a second at the highest IQ rate, 3.072e6
// samples/s.
#include "DspCore/spectrum/LineKernels.h"
#include "DspCore/spectrum/Spectrum.h"
#include "DspCore/spectrum/SpectrumExpAverager.h"
#include "DspCore/spectrum/SpectrumLinearAverager.h"
#include "DspCore/spectrum/SpectrumRmsAverager.h"
#include "DspCore/spectrum/WindowedTransform.h"
#include "support/Signals.h"

#include <algorithm>
#include <benchmark/benchmark.h>

namespace
{
/// A line as an antenna gives it: noise around -120 dB.
std::vector<float> powerLine(int size)
{
    std::vector<float> line;
    for (const COMPLEX &sample : test::noise(size, /*seed*/ 1))
        line.push_back(float(1e-12 * (sample.re * sample.re + sample.im * sample.im)));
    return line;
}

void BM_Frame(benchmark::State &state) // size, averager, whole waterfall and stretch or neither
{
    tp::ThreadPool pool({.workerCount = 1, .queueSize = 2});
    DspCore::Spectrum spectrum(pool, 0);
    const int size = int(state.range(0));
    spectrum.setSize(size);
    spectrum.setAveragingType(int(state.range(1)));
    spectrum.setAveraging(10);
    spectrum.setWaterfallAveraging(state.range(2) != 0);
    spectrum.setRemoveSide(state.range(2) != 0);
    spectrum.open();
    auto samples = test::noise(size, /*seed*/ 1);
    spectrum.append(samples.data(), size);
    for (auto _ : state)
        spectrum.makeFrame();
    state.SetItemsProcessed(state.iterations() * size);
}

/// One line in dB out of a ring, without averages.
void BM_Line(benchmark::State &state)
{
    const int size = int(state.range(0));
    DspCore::WindowedTransform transform;
    transform.init(size, DspCore::Window::BlackmanNuttall);
    DspCore::AlignedVector<COMPLEX32> ring;
    for (const COMPLEX &sample : test::noise(size, /*seed*/ 1))
        ring.push_back({float(sample.re), float(sample.im)});
    DspCore::AlignedVector<COMPLEX32> work(ring.size()), bins(ring.size());
    DspCore::AlignedVector<float> line(ring.size());
    for (auto _ : state) {
        transform.take(ring.data(), size / 3, work.data());
        transform.power(work.data(), bins.data(), line.data());
        DspCore::powerToDb(line.data(), line.data(), size);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * size);
}

/// What a line cannot do without: a transform of its size and precision, into another array.
void BM_BareTransform(benchmark::State &state)
{
    DspCore::FFT32 fft;
    const int size = int(state.range(0));
    fft.init(size);
    DspCore::AlignedVector<COMPLEX32> in;
    for (const COMPLEX &sample : test::noise(size, /*seed*/ 1))
        in.push_back({float(sample.re), float(sample.im)});
    DspCore::AlignedVector<COMPLEX32> out(in.size());
    for (auto _ : state) {
        fft.direct(in.data(), out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * size);
}

void BM_Append(benchmark::State &state) // no job is posted
{
    tp::ThreadPool pool({.workerCount = 1, .queueSize = 2});
    DspCore::Spectrum spectrum(pool, 0);
    spectrum.setSize(4096);
    auto samples = test::noise(int(state.range(0)), /*seed*/ 1);
    spectrum.setUpdateInterval(40);
    spectrum.open();
    for (auto _ : state)
        spectrum.append(samples.data(), int(samples.size()));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <typename Averager>
void BM_Averager(benchmark::State &state) // bins, averaging size; write and read
{
    const auto size = std::size_t(state.range(0));
    Averager averager;
    averager.setSpectrumSize(size);
    averager.setAveragingSize(std::size_t(state.range(1)));
    auto source = powerLine(int(size));
    auto line = source;
    for (auto _ : state) {
        averager.write(source.data(), size);
        averager.read(line.data(), size);
        benchmark::DoNotOptimize(line.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_Interpolator(benchmark::State &state) // output points, from the usual 90 % of them
{
    const auto size = unsigned(state.range(0));
    const auto visible = unsigned(size * 0.8958333333333334);
    const auto source = powerLine(int(size));
    auto line = source;
    DspCore::SpectrumInterpolator interpolator;
    for (auto _ : state) {
        std::copy(source.begin(), source.end(), line.begin());
        interpolator.process(line.data() + (size - visible) / 2, visible, line.data(), size);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
} // namespace

BENCHMARK(BM_Frame)
    ->ArgNames({"", "type", "all"})
    ->ArgsProduct({{4096, 65536}, {0, 1, 2}, {0, 1}})
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Line)->Arg(4096)->Arg(65536)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_BareTransform)->Arg(4096)->Arg(65536)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Append)->Arg(128)->Arg(512)->Arg(4096);
BENCHMARK_TEMPLATE(BM_Averager, DspCore::SpectrumLinearAverager)
    ->ArgsProduct({{4096, 65536}, {1, 30}})
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(BM_Averager, DspCore::SpectrumRmsAverager)
    ->ArgsProduct({{4096, 65536}, {1, 30}})
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(BM_Averager, DspCore::SpectrumExpAverager)
    ->ArgsProduct({{4096, 65536}, {1, 30}})
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Interpolator)->Arg(4096)->Arg(65536)->Unit(benchmark::kMicrosecond);
