// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/DirectConvolution.h"

#include "signal_primitives/Clones.h"

#include <algorithm>

namespace DspCore
{
namespace
{
/// A register's worth of reals at any address. The width is that of the processor's registers: what
/// the compiler makes of a wider type is slower than no vectors at all.
template <typename Real, int kBytes>
struct Register
{
    typedef Real type __attribute__((vector_size(kBytes), aligned(alignof(Real)), may_alias));
    static constexpr int kLanes = kBytes / int(sizeof(Real));
};

/// Real and imaginary part of a run of consecutive outputs, as many as fill the registers: more
/// sums side by side than a multiplication takes cycles.
template <typename Real, int kBytes>
struct Run
{
    static constexpr int kRegisters = 4;
    static constexpr int kLength = kRegisters * Register<Real, kBytes>::kLanes;

    alignas(kBytes) Real re[kLength];
    alignas(kBytes) Real im[kLength];
};

static_assert(Run<double, 64>::kLength <= kDirectPadding);
static_assert(Run<float, 64>::kLength <= kDirectPadding);

/// Sum over the block's samples from..to-1 for a run of outputs; the taps are those that the first
/// output sees at sample 0.
template <typename Real, int kBytes>
[[gnu::always_inline]] inline void accumulate(const Velmora::complex<Real> *x, int from, int to,
    const Real *tapsRe, const Real *tapsIm, Run<Real, kBytes> &run)
{
    using Vector = typename Register<Real, kBytes>::type;
    constexpr int kLanes = Register<Real, kBytes>::kLanes;
    constexpr int kRegisters = Run<Real, kBytes>::kRegisters;

    Vector re[kRegisters]{};
    Vector im[kRegisters]{};
    for (int i = from; i < to; ++i) {
#pragma GCC unroll 4
        for (int r = 0; r < kRegisters; ++r) {
            const Vector tapRe = *reinterpret_cast<const Vector *>(tapsRe - i + r * kLanes);
            const Vector tapIm = *reinterpret_cast<const Vector *>(tapsIm - i + r * kLanes);
            re[r] += x[i].re * tapRe;
            im[r] += x[i].re * tapIm;
            re[r] -= x[i].im * tapIm;
            im[r] += x[i].im * tapRe;
        }
    }
#pragma GCC unroll 4
    for (int r = 0; r < kRegisters; ++r) {
        *reinterpret_cast<Vector *>(run.re + r * kLanes) = re[r];
        *reinterpret_cast<Vector *>(run.im + r * kLanes) = im[r];
    }
}

template <typename Real, int kBytes>
[[gnu::always_inline]] inline void store(const Run<Real, kBytes> &run,
    const Velmora::complex<Real> *sum, Velmora::complex<Real> *out, int count)
{
    // Every element is read before a lower or the same one is written.
#pragma GCC ivdep
    for (int k = 0; k < count; ++k)
        out[k] = {sum[k].re + run.re[k], sum[k].im + run.im[k]};
}

template <int kBytes, typename Real>
[[gnu::always_inline]] inline void convolve(const Velmora::complex<Real> *x, int n,
    const DirectTaps<Real> &taps, const Velmora::complex<Real> *sum, Velmora::complex<Real> *out,
    int first, int last)
{
    using Outputs = Run<Real, kBytes>;
    Outputs run;
    for (int j = first; j < last; j += Outputs::kLength) {
        // Outside this range the run meets nothing but zeros.
        const int from = std::max(0, j - taps.count + 1);
        const int to = std::min(n, j + Outputs::kLength);
        accumulate(x, from, to, taps.re + j, taps.im + j, run);
        if (last - j >= Outputs::kLength)
            store(run, sum + j, out + j - first, Outputs::kLength);
        else
            store(run, sum + j, out + j - first, last - j);
    }
}

// The loader takes the widest form that the processor has.
#if SIGNAL_PRIMITIVES_DISPATCH
#define DEFAULT_VERSION __attribute__((target("default")))
#else
#define DEFAULT_VERSION
#endif

DEFAULT_VERSION void versioned(const COMPLEX *x, int n, const DirectTaps<double> &taps,
    const COMPLEX *sum, COMPLEX *out, int first, int last)
{
    convolve<16>(x, n, taps, sum, out, first, last);
}

#if SIGNAL_PRIMITIVES_DISPATCH
__attribute__((target("arch=x86-64-v3"))) void versioned(const COMPLEX *x, int n,
    const DirectTaps<double> &taps, const COMPLEX *sum, COMPLEX *out, int first, int last)
{
    convolve<32>(x, n, taps, sum, out, first, last);
}

__attribute__((target("arch=x86-64-v4"))) void versioned(const COMPLEX *x, int n,
    const DirectTaps<double> &taps, const COMPLEX *sum, COMPLEX *out, int first, int last)
{
    convolve<64>(x, n, taps, sum, out, first, last);
}
#endif

DEFAULT_VERSION void versioned(const COMPLEX32 *x, int n, const DirectTaps<float> &taps,
    const COMPLEX32 *sum, COMPLEX32 *out, int first, int last)
{
    convolve<16>(x, n, taps, sum, out, first, last);
}

#if SIGNAL_PRIMITIVES_DISPATCH
__attribute__((target("arch=x86-64-v3"))) void versioned(const COMPLEX32 *x, int n,
    const DirectTaps<float> &taps, const COMPLEX32 *sum, COMPLEX32 *out, int first, int last)
{
    convolve<32>(x, n, taps, sum, out, first, last);
}

__attribute__((target("arch=x86-64-v4"))) void versioned(const COMPLEX32 *x, int n,
    const DirectTaps<float> &taps, const COMPLEX32 *sum, COMPLEX32 *out, int first, int last)
{
    convolve<64>(x, n, taps, sum, out, first, last);
}
#endif
} // namespace

void directConvolution(const COMPLEX *x, int n, const DirectTaps<double> &taps, const COMPLEX *sum,
    COMPLEX *out, int first, int last)
{
    versioned(x, n, taps, sum, out, first, last);
}

void directConvolution(const COMPLEX32 *x, int n, const DirectTaps<float> &taps,
    const COMPLEX32 *sum, COMPLEX32 *out, int first, int last)
{
    versioned(x, n, taps, sum, out, first, last);
}
} // namespace DspCore
