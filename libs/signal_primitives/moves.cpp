// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/kernel.h"

#include <algorithm>
#include <cstring>

using signal_primitives::check;

namespace
{
template <typename T>
std::size_t bytes(int len)
{
    return static_cast<std::size_t>(len) * sizeof(T);
}

template <typename T>
IppStatus zero(T *dst, int len)
{
    if (const IppStatus bad = check(len, dst))
        return bad;
    std::memset(dst, 0, bytes<T>(len));
    return ippStsNoErr;
}

template <typename T>
IppStatus copy(const T *src, T *dst, int len)
{
    if (const IppStatus bad = check(len, src, dst))
        return bad;
    std::memcpy(dst, src, bytes<T>(len));
    return ippStsNoErr;
}

template <typename T>
[[gnu::always_inline]] inline IppStatus set(T val, T *dst, int len)
{
    if (const IppStatus bad = check(len, dst))
        return bad;
    for (int n = 0; n < len; ++n)
        dst[n] = val;
    return ippStsNoErr;
}

template <typename T>
[[gnu::always_inline]] inline IppStatus split(const Velmora::complex<T> *src, T *re, T *im, int len)
{
    if (const IppStatus bad = check(len, src, re, im))
        return bad;
#pragma GCC ivdep
    for (int n = 0; n < len; ++n) {
        re[n] = src[n].re;
        im[n] = src[n].im;
    }
    return ippStsNoErr;
}

template <typename T>
[[gnu::always_inline]] inline IppStatus join(
    const T *re, const T *im, Velmora::complex<T> *dst, int len)
{
    if (re == nullptr && im == nullptr)
        return ippStsNullPtrErr;
    if (const IppStatus bad = check(len, dst))
        return bad;
    if (re == nullptr || im == nullptr) {
        for (int n = 0; n < len; ++n)
            dst[n] = {re ? re[n] : T(0), im ? im[n] : T(0)};
        return ippStsNoErr;
    }
#pragma GCC ivdep
    for (int n = 0; n < len; ++n)
        dst[n] = {re[n], im[n]};
    return ippStsNoErr;
}
} // namespace

IppStatus ippsZero_32f(Ipp32f *pDst, int len)
{
    return zero(pDst, len);
}

IppStatus ippsZero_32fc(Ipp32fc *pDst, int len)
{
    return zero(pDst, len);
}

IppStatus ippsZero_64f(Ipp64f *pDst, int len)
{
    return zero(pDst, len);
}

IppStatus ippsZero_64fc(Ipp64fc *pDst, int len)
{
    return zero(pDst, len);
}

PROCESSOR_CLONES
IppStatus ippsSet_32f(Ipp32f val, Ipp32f *pDst, int len)
{
    return set(val, pDst, len);
}

PROCESSOR_CLONES
IppStatus ippsSet_64f(Ipp64f val, Ipp64f *pDst, int len)
{
    return set(val, pDst, len);
}

IppStatus ippsCopy_32f(const Ipp32f *pSrc, Ipp32f *pDst, int len)
{
    return copy(pSrc, pDst, len);
}

IppStatus ippsCopy_32fc(const Ipp32fc *pSrc, Ipp32fc *pDst, int len)
{
    return copy(pSrc, pDst, len);
}

IppStatus ippsCopy_64fc(const Ipp64fc *pSrc, Ipp64fc *pDst, int len)
{
    return copy(pSrc, pDst, len);
}

IppStatus ippsMove_64fc(const Ipp64fc *pSrc, Ipp64fc *pDst, int len)
{
    if (const IppStatus bad = check(len, pSrc, pDst))
        return bad;
    std::memmove(pDst, pSrc, bytes<Ipp64fc>(len));
    return ippStsNoErr;
}

PROCESSOR_CLONES
IppStatus ippsCplxToReal_32fc(const Ipp32fc *pSrc, Ipp32f *pDstRe, Ipp32f *pDstIm, int len)
{
    return split(pSrc, pDstRe, pDstIm, len);
}

PROCESSOR_CLONES
IppStatus ippsCplxToReal_64fc(const Ipp64fc *pSrc, Ipp64f *pDstRe, Ipp64f *pDstIm, int len)
{
    return split(pSrc, pDstRe, pDstIm, len);
}

PROCESSOR_CLONES
IppStatus ippsRealToCplx_32f(const Ipp32f *pSrcRe, const Ipp32f *pSrcIm, Ipp32fc *pDst, int len)
{
    return join(pSrcRe, pSrcIm, pDst, len);
}

PROCESSOR_CLONES
IppStatus ippsRealToCplx_64f(const Ipp64f *pSrcRe, const Ipp64f *pSrcIm, Ipp64fc *pDst, int len)
{
    return join(pSrcRe, pSrcIm, pDst, len);
}
