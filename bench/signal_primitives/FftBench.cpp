// SPDX-License-Identifier: GPL-3.0-or-later
// The transforms beside FFTW's own in-place ones under its plain measured plans. Items are complex
// samples; real time at the highest rate is 3.072e6 items/s in each direction, twice that under the
// overlap of the filters.
#include "signal_primitives/ipps.h"

#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <vector>

namespace
{
// All zeros: a transform repeated in place would overflow or vanish, and FFTW's work does not
// depend on the values.
template <typename C>
std::vector<C> silence(int order)
{
    return std::vector<C>(std::size_t(1) << order);
}

template <typename FftSpec, typename C>
void measure(benchmark::State &state, IppStatus (*init)(FftSpec **, int, int, IppHintAlgorithm),
    IppStatus (*bufferSize)(const FftSpec *, int *),
    IppStatus (*transform)(C *, const FftSpec *, Ipp8u *), IppStatus (*release)(FftSpec *))
{
    const int order = static_cast<int>(state.range(0));
    FftSpec *spec = nullptr;
    int bytes = 0;
    init(&spec, order, IPP_FFT_DIV_FWD_BY_N, ippAlgHintAccurate);
    bufferSize(spec, &bytes);
    Ipp8u *buffer = ippsMalloc_8u(bytes);
    auto data = silence<C>(order);
    for (auto _ : state) {
        transform(data.data(), spec, buffer);
        benchmark::ClobberMemory();
    }
    ippsFree(buffer);
    release(spec);
    state.SetItemsProcessed(state.iterations() << order);
}

void BM_FFTFwd_64fc(benchmark::State &state) // with the division by N
{
    measure(state, ippsFFTInitAlloc_C_64fc, ippsFFTGetBufSize_C_64fc, ippsFFTFwd_CToC_64fc_I,
        ippsFFTFree_C_64fc);
}

void BM_FFTInv_64fc(benchmark::State &state)
{
    measure(state, ippsFFTInitAlloc_C_64fc, ippsFFTGetBufSize_C_64fc, ippsFFTInv_CToC_64fc_I,
        ippsFFTFree_C_64fc);
}

void BM_FFTFwd_32fc(benchmark::State &state) // with the division by N
{
    measure(state, ippsFFTInitAlloc_C_32fc, ippsFFTGetBufSize_C_32fc, ippsFFTFwd_CToC_32fc_I,
        ippsFFTFree_C_32fc);
}

void BM_RawFftw_64fc(benchmark::State &state) // no division
{
    auto data = silence<Ipp64fc>(static_cast<int>(state.range(0)));
    auto *raw = reinterpret_cast<fftw_complex *>(data.data());
    fftw_plan plan = fftw_plan_dft_1d(1 << state.range(0), raw, raw, FFTW_FORWARD, FFTW_MEASURE);
    for (auto _ : state) {
        fftw_execute(plan);
        benchmark::ClobberMemory();
    }
    fftw_destroy_plan(plan);
    state.SetItemsProcessed(state.iterations() << state.range(0));
}

void BM_RawFftw_32fc(benchmark::State &state) // no division
{
    auto data = silence<Ipp32fc>(static_cast<int>(state.range(0)));
    auto *raw = reinterpret_cast<fftwf_complex *>(data.data());
    fftwf_plan plan = fftwf_plan_dft_1d(1 << state.range(0), raw, raw, FFTW_FORWARD, FFTW_MEASURE);
    for (auto _ : state) {
        fftwf_execute(plan);
        benchmark::ClobberMemory();
    }
    fftwf_destroy_plan(plan);
    state.SetItemsProcessed(state.iterations() << state.range(0));
}

// What a block pays at its set-up once some other block has used the order.
void BM_FFTInitAllocAgain(benchmark::State &state)
{
    for (auto _ : state) {
        IppsFFTSpec_C_64fc *spec = nullptr;
        ippsFFTInitAlloc_C_64fc(&spec, 13, IPP_FFT_DIV_FWD_BY_N, ippAlgHintAccurate);
        ippsFFTFree_C_64fc(spec);
    }
}

BENCHMARK(BM_FFTFwd_64fc)->DenseRange(6, 16);
BENCHMARK(BM_FFTInv_64fc)->DenseRange(6, 16);
BENCHMARK(BM_RawFftw_64fc)->DenseRange(6, 16);
BENCHMARK(BM_FFTFwd_32fc)->DenseRange(6, 16);
BENCHMARK(BM_RawFftw_32fc)->DenseRange(6, 16);
BENCHMARK(BM_FFTInitAllocAgain);
} // namespace
