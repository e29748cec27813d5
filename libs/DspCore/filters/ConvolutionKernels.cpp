// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/ConvolutionKernels.h"

#include "processor/Clones.h"

#include <algorithm>
#include <utility>

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

    // A reference to the bare type is to an aligned one for clang.
    struct [[gnu::packed, gnu::may_alias]] Anywhere { type value; };

    [[gnu::always_inline]] static inline const Anywhere &at(const Real *address)
    {
        return *reinterpret_cast<const Anywhere *>(address);
    }
    [[gnu::always_inline]] static inline Anywhere &at(Real *address)
    {
        return *reinterpret_cast<Anywhere *>(address);
    }

    /// One register's worth of complex numbers to their parts, and back. The compiler makes single
    /// moves of plain loops.
    [[gnu::always_inline]] static inline void split(const Real *numbers, Real *re, Real *im)
    {
        split(numbers, re, im, std::make_index_sequence<kLanes>{});
    }
    [[gnu::always_inline]] static inline void join(const Real *re, const Real *im, Real *numbers)
    {
        join(re, im, numbers, std::make_index_sequence<kLanes>{});
    }

private:
    template <std::size_t... kLane>
    [[gnu::always_inline]] static inline void split(
        const Real *numbers, Real *re, Real *im, std::index_sequence<kLane...>)
    {
        const type first = at(numbers).value;
        const type second = at(numbers + kLanes).value;
        at(re).value = __builtin_shufflevector(first, second, (2 * kLane)...);
        at(im).value = __builtin_shufflevector(first, second, (2 * kLane + 1)...);
    }
    template <std::size_t... kLane>
    [[gnu::always_inline]] static inline void join(
        const Real *re, const Real *im, Real *numbers, std::index_sequence<kLane...>)
    {
        const type first = at(re).value;
        const type second = at(im).value;
        at(numbers).value =
            __builtin_shufflevector(first, second, (kLane / 2 + kLane % 2 * kLanes)...);
        at(numbers + kLanes).value = __builtin_shufflevector(
            first, second, (kLanes / 2 + kLane / 2 + kLane % 2 * kLanes)...);
    }
};

/// Sums of complex products, kRegisters registers wide. The four products of the parts have sums of
/// their own, and with one register even and odd terms as well: eight sums side by side are as many
/// as a processor with two multipliers of four cycles keeps busy.
template <typename Real, int kBytes>
struct Sums
{
    using Reg = Register<Real, kBytes>;
    using Vector = typename Reg::type;
    static constexpr int kRegisters = kBytes == 64 ? 1 : 2;
    static constexpr int kTurns = 2 / kRegisters;
    static constexpr int kLength = kRegisters * Reg::kLanes;

    Vector reRe[kTurns][kRegisters]{};
    Vector imIm[kTurns][kRegisters]{};
    Vector reIm[kTurns][kRegisters]{};
    Vector imRe[kTurns][kRegisters]{};

    /// Adds number * x for a run of x.
    [[gnu::always_inline]] inline void addScaled(
        int turn, const Real *xRe, const Real *xIm, Real re, Real im)
    {
#pragma GCC unroll 2
        for (int r = 0; r < kRegisters; ++r) {
            const Vector vRe = Reg::at(xRe + r * Reg::kLanes).value;
            const Vector vIm = Reg::at(xIm + r * Reg::kLanes).value;
            reRe[turn][r] += re * vRe;
            imIm[turn][r] += im * vIm;
            reIm[turn][r] += re * vIm;
            imRe[turn][r] += im * vRe;
        }
    }

    /// Adds h * x for a run of both.
    [[gnu::always_inline]] inline void addProducts(
        int turn, const Real *xRe, const Real *xIm, const Real *hRe, const Real *hIm)
    {
#pragma GCC unroll 2
        for (int r = 0; r < kRegisters; ++r) {
            const Vector vRe = Reg::at(xRe + r * Reg::kLanes).value;
            const Vector vIm = Reg::at(xIm + r * Reg::kLanes).value;
            const Vector wRe = Reg::at(hRe + r * Reg::kLanes).value;
            const Vector wIm = Reg::at(hIm + r * Reg::kLanes).value;
            reRe[turn][r] += wRe * vRe;
            imIm[turn][r] += wIm * vIm;
            reIm[turn][r] += wRe * vIm;
            imRe[turn][r] += wIm * vRe;
        }
    }

    [[gnu::always_inline]] inline void result(Real *re, Real *im) const
    {
#pragma GCC unroll 2
        for (int r = 0; r < kRegisters; ++r) {
            Vector sumRe = reRe[0][r] - imIm[0][r];
            Vector sumIm = reIm[0][r] + imRe[0][r];
            if constexpr (kTurns == 2) {
                sumRe += reRe[1][r] - imIm[1][r];
                sumIm += reIm[1][r] + imRe[1][r];
            }
            Reg::at(re + r * Reg::kLanes).value = sumRe;
            Reg::at(im + r * Reg::kLanes).value = sumIm;
        }
    }
};

template <int kBytes, typename Real>
[[gnu::always_inline]] inline void direct(
    const Parts<Real> &x, int n, const Parts<Real> &taps, int count, Velmora::complex<Real> *out)
{
    using Run = Sums<Real, kBytes>;
    static_assert(Run::kLength <= kDirectOverrun);
    alignas(64) Real re[Run::kLength];
    alignas(64) Real im[Run::kLength];
    for (int i = 0; i < n; i += Run::kLength) {
        const Real *const xRe = x.re + i;
        const Real *const xIm = x.im + i;
        Run run;
        int j = 0;
        for (; j + Run::kTurns <= count; j += Run::kTurns) {
#pragma GCC unroll 2
            for (int turn = 0; turn < Run::kTurns; ++turn)
                run.addScaled(
                    turn, xRe - j - turn, xIm - j - turn, taps.re[j + turn], taps.im[j + turn]);
        }
        for (; j < count; ++j)
            run.addScaled(0, xRe - j, xIm - j, taps.re[j], taps.im[j]);
        run.result(re, im);
        const int length = std::min(n - i, Run::kLength);
        for (int k = 0; k < length; ++k) {
            out[i + k].re += re[k];
            out[i + k].im += im[k];
        }
    }
}

/// The terms of one group of bins for `terms` spectra that follow each other in both sets.
template <typename Run, typename Real>
[[gnu::always_inline]] inline void addTerms(Run &run, const Real *x, const Real *h, int terms)
{
    constexpr int kBins = kGroupBins<Real>;
    constexpr int kStride = 2 * kBins;
    int k = 0;
    for (; k + Run::kTurns <= terms; k += Run::kTurns) {
#pragma GCC unroll 2
        for (int turn = 0; turn < Run::kTurns; ++turn) {
            const Real *const xk = x + (k + turn) * kStride;
            const Real *const hk = h + (k + turn) * kStride;
            run.addProducts(turn, xk, xk + kBins, hk, hk + kBins);
        }
    }
    for (; k < terms; ++k)
        run.addProducts(
            0, x + k * kStride, x + k * kStride + kBins, h + k * kStride, h + k * kStride + kBins);
}

template <int kBytes, typename Real>
[[gnu::always_inline]] inline void sum(const Spectra<Real> &history, int newest,
    const Spectra<Real> &filter, int first, int bins, Velmora::complex<Real> *out)
{
    using Run = Sums<Real, kBytes>;
    constexpr int kBins = kGroupBins<Real>;
    constexpr int kStride = 2 * kBins;
    alignas(64) Real re[kBins];
    alignas(64) Real im[kBins];
    const int count = history.count;
    const int beforeWrap = std::min(count - first, count - newest);
    const int afterWrap = count - first - beforeWrap;
    const int group = count * kStride;
    for (int g = 0; g < bins / kBins; ++g) {
        const Real *const x = history.values + g * group;
        const Real *const h = filter.values + g * group + first * kStride;
        for (int b = 0; b < kBins; b += Run::kLength) {
            Run run;
            addTerms(run, x + newest * kStride + b, h + b, beforeWrap);
            addTerms(run, x + b, h + beforeWrap * kStride + b, afterWrap);
            run.result(re + b, im + b);
        }
        for (int b = 0; b < kBins; b += Run::Reg::kLanes)
            Run::Reg::join(re + b, im + b, &out[g * kBins + b].re);
    }
}

template <int kBytes, typename Real>
[[gnu::always_inline]] inline void store(
    const Velmora::complex<Real> *spectrum, int bins, Real *values, int index, int count)
{
    using Reg = Register<Real, kBytes>;
    constexpr int kBins = kGroupBins<Real>;
    for (int g = 0; g < bins / kBins; ++g) {
        Real *const re = values + (g * count + index) * 2 * kBins;
        for (int b = 0; b < kBins; b += Reg::kLanes)
            Reg::split(&spectrum[g * kBins + b].re, re + b, re + kBins + b);
    }
}

/// The sums of kOutputs windows, with eight running sums in all.
template <int kBytes, int kOutputs>
[[gnu::always_inline]] inline void sumSideBySide(
    const double *oldest, int step, const double *taps, int count, COMPLEX *out, int outStep)
{
    using Reg = Register<double, kBytes>;
    constexpr int kTurns = 8 / kOutputs;
    constexpr int kStride = kTurns * Reg::kLanes;
    typename Reg::type sums[kOutputs][kTurns]{};
    int i = 0;
    for (; i + kStride <= 2 * count; i += kStride) {
#pragma GCC unroll 8
        for (int turn = 0; turn < kTurns; ++turn) {
            const typename Reg::type tap = Reg::at(taps + i + turn * Reg::kLanes).value;
#pragma GCC unroll 8
            for (int n = 0; n < kOutputs; ++n)
                sums[n][turn] +=
                    tap * Reg::at(oldest + 2 * n * step + i + turn * Reg::kLanes).value;
        }
    }
    for (; i < 2 * count; i += Reg::kLanes) {
        const typename Reg::type tap = Reg::at(taps + i).value;
#pragma GCC unroll 8
        for (int n = 0; n < kOutputs; ++n)
            sums[n][0] += tap * Reg::at(oldest + 2 * n * step + i).value;
    }
    for (int n = 0; n < kOutputs; ++n) {
        for (int turn = 1; turn < kTurns; ++turn)
            sums[n][0] += sums[n][turn];
        COMPLEX sum{0.0, 0.0};
        for (int lane = 0; lane < Reg::kLanes; lane += 2) {
            sum.re += sums[n][0][lane];
            sum.im += sums[n][0][lane + 1];
        }
        out[n * outStep] = sum;
    }
}

/// The sums of eight windows whose length is eight steps, or a multiple. Taps and samples in rows
/// of one step,
///
///     taps     h0 h1 h2 .. h7
///     samples  x0 x1 x2 .. x7 x8 .. x14         window m is the sum of h[q] x[m + q]
///
/// a column of samples meets a column of taps: each sample is loaded once for up to eight windows,
/// while kRows taps wait in registers. Window by window each product would have a load of its own,
/// and a processor loads at most as much as it multiplies.
template <int kBytes, int kRows>
[[gnu::always_inline]] inline void sumRows(
    const double *oldest, int step, const double *taps, int count, COMPLEX *out)
{
    using Reg = Register<double, kBytes>;
    typename Reg::type sums[kWindowsInRows]{};
    for (int row = 0; row < count / step; row += kRows) {
        for (int i = 0; i < 2 * step; i += Reg::kLanes) {
            typename Reg::type tap[kRows];
#pragma GCC unroll 8
            for (int q = 0; q < kRows; ++q)
                tap[q] = Reg::at(taps + 2 * (row + q) * step + i).value;
#pragma GCC unroll 16
            for (int k = 0; k < kWindowsInRows + kRows - 1; ++k) {
                const typename Reg::type x = Reg::at(oldest + 2 * (row + k) * step + i).value;
#pragma GCC unroll 8
                for (int m = 0; m < kWindowsInRows; ++m) {
                    if (k >= m && k - m < kRows)
                        sums[m] += tap[k - m] * x;
                }
            }
        }
    }
    for (int m = 0; m < kWindowsInRows; ++m) {
        COMPLEX sum{0.0, 0.0};
        for (int lane = 0; lane < Reg::kLanes; lane += 2) {
            sum.re += sums[m][lane];
            sum.im += sums[m][lane + 1];
        }
        out[m] = sum;
    }
}

template <int kBytes>
[[gnu::always_inline]] inline void windows(const COMPLEX *oldest, int step, const double *taps,
    int count, COMPLEX *out, int outStep, int outputs)
{
    constexpr int kSideBySide = 4;
    constexpr int kRows = kBytes == 64 ? 8 : 4; // as many taps as there are registers for
    int n = 0;
    if (kBytes > 16 && outStep == 1 && inRows(step, count)) {
        for (; n + kWindowsInRows <= outputs; n += kWindowsInRows)
            sumRows<kBytes, kRows>(&oldest[n * step].re, step, taps, count, out + n);
    }
    for (; n + kSideBySide <= outputs; n += kSideBySide)
        sumSideBySide<kBytes, kSideBySide>(
            &oldest[n * step].re, step, taps, count, out + n * outStep, outStep);
    for (; n < outputs; ++n)
        sumSideBySide<kBytes, 1>(&oldest[n * step].re, step, taps, count, out + n * outStep, 0);
}

#if PROCESSOR_DISPATCH
#define VERSION(name) __attribute__((target(name)))
#else
#define VERSION(name)
#endif

#define VERSIONS_FOR(Real, kBytes, name)                                                           \
    VERSION(name)                                                                                  \
    void versionedDirect(const Parts<Real> &x, int n, const Parts<Real> &taps, int count,          \
        Velmora::complex<Real> *out)                                                               \
    {                                                                                              \
        direct<kBytes>(x, n, taps, count, out);                                                    \
    }                                                                                              \
    VERSION(name)                                                                                  \
    void versionedSum(const Spectra<Real> &history, int newest, const Spectra<Real> &filter,       \
        int first, int bins, Velmora::complex<Real> *out)                                          \
    {                                                                                              \
        sum<kBytes>(history, newest, filter, first, bins, out);                                    \
    }                                                                                              \
    VERSION(name)                                                                                  \
    void versionedStore(                                                                           \
        const Velmora::complex<Real> *spectrum, int bins, Real *values, int index, int count)      \
    {                                                                                              \
        store<kBytes>(spectrum, bins, values, index, count);                                       \
    }

#define WINDOWS_VERSION(kBytes, name)                                                              \
    VERSION(name)                                                                                  \
    void versionedWindows(const COMPLEX *oldest, int step, const double *taps, int count,          \
        COMPLEX *out, int outStep, int outputs)                                                    \
    {                                                                                              \
        windows<kBytes>(oldest, step, taps, count, out, outStep, outputs);                         \
    }

WINDOWS_VERSION(16, "default")
VERSIONS_FOR(double, 16, "default")
VERSIONS_FOR(float, 16, "default")
#if PROCESSOR_DISPATCH
WINDOWS_VERSION(32, "arch=x86-64-v3")
WINDOWS_VERSION(64, "arch=x86-64-v4")
VERSIONS_FOR(double, 32, "arch=x86-64-v3")
VERSIONS_FOR(float, 32, "arch=x86-64-v3")
VERSIONS_FOR(double, 64, "arch=x86-64-v4")
VERSIONS_FOR(float, 64, "arch=x86-64-v4")
#endif
} // namespace

void directFir(Parts<double> x, int n, Parts<double> taps, int count, COMPLEX *out)
{
    versionedDirect(x, n, taps, count, out);
}

void directFir(Parts<float> x, int n, Parts<float> taps, int count, COMPLEX32 *out)
{
    versionedDirect(x, n, taps, count, out);
}

void sumProducts(
    Spectra<double> history, int newest, Spectra<double> filter, int first, int bins, COMPLEX *out)
{
    versionedSum(history, newest, filter, first, bins, out);
}

void sumProducts(
    Spectra<float> history, int newest, Spectra<float> filter, int first, int bins, COMPLEX32 *out)
{
    versionedSum(history, newest, filter, first, bins, out);
}

void sumWindows(const COMPLEX *oldest, int step, const double *taps, int count, COMPLEX *out,
    int outStep, int outputs)
{
    versionedWindows(oldest, step, taps, count, out, outStep, outputs);
}

PROCESSOR_CLONES
void foldProducts(const COMPLEX *a, const COMPLEX *b, int bins, COMPLEX *out, int folded)
{
#pragma GCC ivdep
    for (int n = 0; n < folded; ++n)
        out[n] = {a[n].re * b[n].re - a[n].im * b[n].im, a[n].re * b[n].im + a[n].im * b[n].re};
    for (int image = folded; image < bins; image += folded) {
        const COMPLEX *const ai = a + image;
        const COMPLEX *const bi = b + image;
#pragma GCC ivdep
        for (int n = 0; n < folded; ++n) {
            out[n].re += ai[n].re * bi[n].re - ai[n].im * bi[n].im;
            out[n].im += ai[n].re * bi[n].im + ai[n].im * bi[n].re;
        }
    }
}

PROCESSOR_CLONES
void foldBins(COMPLEX *spectrum, int bins, int folded)
{
    for (int image = folded; image < bins; image += folded) {
        const COMPLEX *const other = spectrum + image;
#pragma GCC ivdep
        for (int n = 0; n < folded; ++n) {
            spectrum[n].re += other[n].re;
            spectrum[n].im += other[n].im;
        }
    }
}

void storeSpectrum(const COMPLEX *spectrum, int bins, double *values, int index, int count)
{
    versionedStore(spectrum, bins, values, index, count);
}

void storeSpectrum(const COMPLEX32 *spectrum, int bins, float *values, int index, int count)
{
    versionedStore(spectrum, bins, values, index, count);
}
} // namespace DspCore
