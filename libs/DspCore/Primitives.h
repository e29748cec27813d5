// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"
#include "signal_primitives/ipps.h"

namespace DspCore
{
/// The vector operations of one precision under one set of names, so that blocks which exist in
/// both precisions are written once.
template <typename Sample>
struct Primitives;

template <>
struct Primitives<COMPLEX>
{
    using Real = REAL;
    using FftSpec = IppsFFTSpec_C_64fc;

    static constexpr auto fftInitAlloc = ippsFFTInitAlloc_C_64fc;
    static constexpr auto fftBufferSize = ippsFFTGetBufSize_C_64fc;
    static constexpr auto fftForward = ippsFFTFwd_CToC_64fc_I;
    static constexpr auto fftInverse = ippsFFTInv_CToC_64fc_I;
    static constexpr auto fftForwardInto = ippsFFTFwd_CToC_64fc;
    static constexpr auto fftInverseInto = ippsFFTInv_CToC_64fc;
    static constexpr auto fftFree = ippsFFTFree_C_64fc;
    static constexpr auto largest = ippsMax_64f;
    static constexpr auto scaleReals = ippsMulC_64f_I;
    static constexpr auto multiply = ippsMul_64fc_I;
};

template <>
struct Primitives<COMPLEX32>
{
    using Real = REAL32;
    using FftSpec = IppsFFTSpec_C_32fc;

    static constexpr auto fftInitAlloc = ippsFFTInitAlloc_C_32fc;
    static constexpr auto fftBufferSize = ippsFFTGetBufSize_C_32fc;
    static constexpr auto fftForward = ippsFFTFwd_CToC_32fc_I;
    static constexpr auto fftInverse = ippsFFTInv_CToC_32fc_I;
    static constexpr auto fftForwardInto = ippsFFTFwd_CToC_32fc;
    static constexpr auto fftInverseInto = ippsFFTInv_CToC_32fc;
    static constexpr auto fftFree = ippsFFTFree_C_32fc;
    static constexpr auto largest = ippsMax_32f;
    static constexpr auto scaleReals = ippsMulC_32f_I;
    static constexpr auto multiply = ippsMul_32fc_I;
};
} // namespace DspCore
