// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/kernel.h"

#include <cmath>

using signal_primitives::check;
using Velmora::complex;

// The in-place loops are marked free of dependencies: the two arrays are one or apart, so that
// squaring an array by its own product is as fast as the product of two.

namespace
{
template <typename T>
[[gnu::always_inline]] inline complex<T> sum(complex<T> a, complex<T> b)
{
    return {a.re + b.re, a.im + b.im};
}

template <typename T>
[[gnu::always_inline]] inline T sum(T a, T b)
{
    return a + b;
}

template <typename T>
[[gnu::always_inline]] inline complex<T> product(complex<T> a, complex<T> b)
{
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}

template <typename T>
[[gnu::always_inline]] inline T product(T a, T b)
{
    return a * b;
}

template <typename T>
[[gnu::always_inline]] inline IppStatus add(const T *src, T *srcDst, int len)
{
    if (const IppStatus bad = check(len, src, srcDst))
        return bad;
#pragma GCC ivdep
    for (int n = 0; n < len; ++n)
        srcDst[n] = sum(src[n], srcDst[n]);
    return ippStsNoErr;
}

template <typename T>
[[gnu::always_inline]] inline IppStatus multiply(const T *src1, const T *src2, T *dst, int len)
{
    if (const IppStatus bad = check(len, src1, src2, dst))
        return bad;
#pragma GCC ivdep
    for (int n = 0; n < len; ++n)
        dst[n] = product(src1[n], src2[n]);
    return ippStsNoErr;
}

template <typename T>
[[gnu::always_inline]] inline IppStatus multiplyBy(T val, T *srcDst, int len)
{
    if (const IppStatus bad = check(len, srcDst))
        return bad;
    for (int n = 0; n < len; ++n)
        srcDst[n] = product(val, srcDst[n]);
    return ippStsNoErr;
}

template <typename T>
[[gnu::always_inline]] inline IppStatus power(const complex<T> *src, T *dst, int len)
{
    if (const IppStatus bad = check(len, src, dst))
        return bad;
#pragma GCC ivdep
    for (int n = 0; n < len; ++n)
        dst[n] = src[n].re * src[n].re + src[n].im * src[n].im;
    return ippStsNoErr;
}

// A fold over an array by this many independent lanes, which the compiler keeps in registers: a
// single running value would bind every step to the latency of the one before.
constexpr int kLanes = 32;

template <typename T, typename Fold>
[[gnu::always_inline]] inline T reduce(const T *src, int len, T start, Fold fold)
{
    T lanes[kLanes];
    for (T &lane : lanes)
        lane = start;
    int n = 0;
    for (; n + kLanes <= len; n += kLanes) {
        for (int k = 0; k < kLanes; ++k)
            lanes[k] = fold(lanes[k], src[n + k]);
    }
    T result = start;
    for (; n < len; ++n)
        result = fold(result, src[n]);
    for (const T lane : lanes)
        result = fold(result, lane);
    return result;
}

template <typename T>
[[gnu::always_inline]] inline IppStatus largest(const T *src, int len, T *result)
{
    if (const IppStatus bad = check(len, src, result))
        return bad;
    *result = reduce(src, len, src[0], [](T a, T b) { return b > a ? b : a; });
    return ippStsNoErr;
}

[[gnu::always_inline]] inline IppStatus total(const double *src, int len, double *result)
{
    if (const IppStatus bad = check(len, src, result))
        return bad;
    *result = reduce(src, len, 0.0, [](double a, double b) { return a + b; });
    return ippStsNoErr;
}
} // namespace

PROCESSOR_CLONES
IppStatus ippsAdd_32f_I(const Ipp32f *pSrc, Ipp32f *pSrcDst, int len)
{
    return add(pSrc, pSrcDst, len);
}

PROCESSOR_CLONES
IppStatus ippsAdd_32fc_I(const Ipp32fc *pSrc, Ipp32fc *pSrcDst, int len)
{
    return add(pSrc, pSrcDst, len);
}

PROCESSOR_CLONES
IppStatus ippsAdd_64fc_I(const Ipp64fc *pSrc, Ipp64fc *pSrcDst, int len)
{
    return add(pSrc, pSrcDst, len);
}

PROCESSOR_CLONES
IppStatus ippsAddC_32f_I(Ipp32f val, Ipp32f *pSrcDst, int len)
{
    if (const IppStatus bad = check(len, pSrcDst))
        return bad;
    for (int n = 0; n < len; ++n)
        pSrcDst[n] += val;
    return ippStsNoErr;
}

PROCESSOR_CLONES
IppStatus ippsMul_32f_I(const Ipp32f *pSrc, Ipp32f *pSrcDst, int len)
{
    return multiply(pSrc, pSrcDst, pSrcDst, len);
}

PROCESSOR_CLONES
IppStatus ippsMul_64f_I(const Ipp64f *pSrc, Ipp64f *pSrcDst, int len)
{
    return multiply(pSrc, pSrcDst, pSrcDst, len);
}

PROCESSOR_CLONES
IppStatus ippsMul_32fc_I(const Ipp32fc *pSrc, Ipp32fc *pSrcDst, int len)
{
    return multiply(pSrc, pSrcDst, pSrcDst, len);
}

PROCESSOR_CLONES
IppStatus ippsMul_64fc_I(const Ipp64fc *pSrc, Ipp64fc *pSrcDst, int len)
{
    return multiply(pSrc, pSrcDst, pSrcDst, len);
}

PROCESSOR_CLONES
IppStatus ippsMul_32f_A24(const Ipp32f *pSrc1, const Ipp32f *pSrc2, Ipp32f *pDst, Ipp32s len)
{
    return multiply(pSrc1, pSrc2, pDst, len);
}

PROCESSOR_CLONES
IppStatus ippsMulC_32f_I(Ipp32f val, Ipp32f *pSrcDst, int len)
{
    return multiplyBy(val, pSrcDst, len);
}

PROCESSOR_CLONES
IppStatus ippsMulC_64f_I(Ipp64f val, Ipp64f *pSrcDst, int len)
{
    return multiplyBy(val, pSrcDst, len);
}

PROCESSOR_CLONES
IppStatus ippsMulC_32fc_I(Ipp32fc val, Ipp32fc *pSrcDst, int len)
{
    return multiplyBy(val, pSrcDst, len);
}

PROCESSOR_CLONES
IppStatus ippsMulC_64fc_I(Ipp64fc val, Ipp64fc *pSrcDst, int len)
{
    return multiplyBy(val, pSrcDst, len);
}

PROCESSOR_CLONES
IppStatus ippsMax_32f(const Ipp32f *pSrc, int len, Ipp32f *pMax)
{
    return largest(pSrc, len, pMax);
}

PROCESSOR_CLONES
IppStatus ippsMax_64f(const Ipp64f *pSrc, int len, Ipp64f *pMax)
{
    return largest(pSrc, len, pMax);
}

PROCESSOR_CLONES
IppStatus ippsSum_64f(const Ipp64f *pSrc, int len, Ipp64f *pSum)
{
    return total(pSrc, len, pSum);
}

PROCESSOR_CLONES
IppStatus ippsMean_64f(const Ipp64f *pSrc, int len, Ipp64f *pMean)
{
    if (const IppStatus bad = total(pSrc, len, pMean))
        return bad;
    *pMean /= len;
    return ippStsNoErr;
}

PROCESSOR_CLONES
IppStatus ippsSqr_64f_I(Ipp64f *pSrcDst, int len)
{
    return multiply(pSrcDst, pSrcDst, pSrcDst, len);
}

PROCESSOR_CLONES
IppStatus ippsSqrt_32f_I(Ipp32f *pSrcDst, int len)
{
    if (const IppStatus bad = check(len, pSrcDst))
        return bad;
    for (int n = 0; n < len; ++n)
        pSrcDst[n] = std::sqrt(pSrcDst[n]);
    return ippStsNoErr;
}

PROCESSOR_CLONES
IppStatus ippsMagnitude_64fc(const Ipp64fc *pSrc, Ipp64f *pDst, int len)
{
    if (const IppStatus bad = check(len, pSrc, pDst))
        return bad;
#pragma GCC ivdep
    for (int n = 0; n < len; ++n)
        pDst[n] = std::sqrt(pSrc[n].re * pSrc[n].re + pSrc[n].im * pSrc[n].im);
    return ippStsNoErr;
}

PROCESSOR_CLONES
IppStatus ippsPowerSpectr_32fc(const Ipp32fc *pSrc, Ipp32f *pDst, int len)
{
    return power(pSrc, pDst, len);
}

PROCESSOR_CLONES
IppStatus ippsPowerSpectr_64fc(const Ipp64fc *pSrc, Ipp64f *pDst, int len)
{
    return power(pSrc, pDst, len);
}

PROCESSOR_CLONES
IppStatus ippsConvert_64f32f(const Ipp64f *pSrc, Ipp32f *pDst, int len)
{
    if (const IppStatus bad = check(len, pSrc, pDst))
        return bad;
#pragma GCC ivdep
    for (int n = 0; n < len; ++n)
        pDst[n] = static_cast<Ipp32f>(pSrc[n]);
    return ippStsNoErr;
}
