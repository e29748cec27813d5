// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/kernel.h"
#include "signal_primitives/tone_phase.h"

#include <algorithm>

using Velmora::complex;
using namespace signal_primitives;

namespace
{
// The tone is a product of two short tables:
//
//     x[anchor + kLanes k + l] = z[k] w[l],   z[k] = z[0] s^k,   w[l] = exp(j 2 pi f l)
//
// with the step s = exp(j 2 pi f kLanes). z[0] comes from the exact phase of every
// kAnchorSpacing-th sample, so the rounding of at most 64 steps adds up, some 1e-14.
constexpr int kLanes = 16;
constexpr int kAnchorSpacing = 64 * kLanes;

[[gnu::always_inline]] inline complex<double> product(complex<double> a, complex<double> b)
{
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}

/// The lanes w[l] and j w[l], so that z w = re(z) w + im(z) (j w) is a plain sum over the
/// interleaved real and imaginary parts.
struct Lanes
{
    alignas(64) complex<double> w[kLanes];
    alignas(64) complex<double> jw[kLanes];
};

// By doubling the filled part, four products deep.
void fill(Lanes &lanes, double frequency)
{
    complex<double>(&w)[kLanes] = lanes.w;
    w[0] = {1.0, 0.0};
    complex<double> next = unitAtTurns(turns(frequency, 1));
    for (int filled = 1; filled < kLanes; filled *= 2) {
        for (int l = 0; l < filled; ++l)
            w[filled + l] = product(w[l], next);
        next = product(next, next);
    }
    for (int l = 0; l < kLanes; ++l)
        lanes.jw[l] = {-w[l].im, w[l].re};
}

PROCESSOR_CLONES
void run(complex<double> *dst, int len, complex<double> z, complex<double> step, const Lanes &lanes)
{
    const double *w = &lanes.w[0].re;
    const double *jw = &lanes.jw[0].re;
    double *out = &dst->re;
    const auto write = [&](int count) __attribute__((always_inline))
    {
#pragma GCC ivdep
        for (int i = 0; i < count; ++i)
            out[i] = z.re * w[i] + z.im * jw[i];
    };
    for (; len >= kLanes; len -= kLanes, out += 2 * kLanes) {
        write(2 * kLanes);
        z = product(z, step);
    }
    write(2 * len);
}
} // namespace

IppStatus ippsTone_Direct_64fc(
    Ipp64fc *pDst, int len, Ipp64f magn, Ipp64f rFreq, Ipp64f *pPhase, IppHintAlgorithm)
{
    if (const IppStatus bad = check(len, pDst, pPhase))
        return bad;
    if (!(magn > 0.0))
        return ippStsToneMagnErr;
    if (!(rFreq >= 0.0 && rFreq <= 1.0))
        return ippStsToneFreqErr;
    if (!(*pPhase >= 0.0 && *pPhase < kTwoPi))
        return ippStsTonePhaseErr;

    Lanes lanes;
    fill(lanes, rFreq);
    const complex<double> step = unitAtTurns(turns(rFreq, kLanes));
    for (int n = 0; n < len; n += kAnchorSpacing) {
        const Extended t = turns(rFreq, n);
        const complex<double> z = unit(*pPhase + kTwoPi * (t.value + t.rest));
        run(pDst + n, std::min(len - n, kAnchorSpacing), {magn * z.re, magn * z.im}, step, lanes);
    }
    *pPhase = advanced(*pPhase, turns(rFreq, len));
    return ippStsNoErr;
}
