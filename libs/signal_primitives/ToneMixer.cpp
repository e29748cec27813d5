// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ToneMixer.h"

#include "signal_primitives/kernel.h"
#include "signal_primitives/tone_phase.h"

namespace signal_primitives
{
namespace
{
constexpr int kAnchorSpacing = 1024;

PROCESSOR_CLONES
void rotate(const Ipp64fc *block, Ipp64fc *mixed, int length, Ipp64fc z, const double *wRe,
    const double *wIm)
{
#pragma GCC ivdep
    for (int n = 0; n < length; ++n) {
        const double re = z.re * wRe[n] - z.im * wIm[n];
        const double im = z.re * wIm[n] + z.im * wRe[n];
        const Ipp64fc x = block[n];
        mixed[n] = {x.re * re - x.im * im, x.re * im + x.im * re};
    }
}

IppStatus checkTone(double frequency, double phase)
{
    if (!(frequency >= 0.0 && frequency <= 1.0))
        return ippStsToneFreqErr;
    return phase >= 0.0 && phase < kTwoPi ? ippStsNoErr : ippStsTonePhaseErr;
}
} // namespace

void ToneMixer::setFrequency(double frequency)
{
    mFrequency = frequency;
    mStep = unitAtTurns(turns(frequency, kTable));
    for (int n = 0; n < kTable; ++n) {
        const Ipp64fc w = unitAtTurns(turns(frequency, n));
        mRe[n] = w.re;
        mIm[n] = w.im;
    }
}

IppStatus ToneMixer::mix(
    const Ipp64fc *block, Ipp64fc *mixed, int length, double frequency, double *phase)
{
    if (const IppStatus bad = check(length, block, mixed, phase))
        return bad;
    if (const IppStatus bad = checkTone(frequency, *phase))
        return bad;

    if (frequency != mFrequency)
        setFrequency(frequency);
    Ipp64fc z{};
    for (int n = 0; n < length; n += kTable) {
        if (n % kAnchorSpacing == 0) {
            const Extended t = turns(frequency, n);
            z = unit(*phase + kTwoPi * (t.value + t.rest));
        } else {
            z = {z.re * mStep.re - z.im * mStep.im, z.re * mStep.im + z.im * mStep.re};
        }
        rotate(block + n, mixed + n, std::min(length - n, kTable), z, mRe, mIm);
    }
    *phase = advanced(*phase, turns(frequency, length));
    return ippStsNoErr;
}

IppStatus ToneMixer::skip(int length, double frequency, double *phase)
{
    if (const IppStatus bad = check(length, phase))
        return bad;
    if (const IppStatus bad = checkTone(frequency, *phase))
        return bad;
    *phase = advanced(*phase, turns(frequency, length));
    return ippStsNoErr;
}
} // namespace signal_primitives
