// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "signal_primitives/complex.h"

/// Vector operations of the receiver on plain arrays.
///
/// The names and argument orders are those of the processor maker's signal-processing library, so
/// that a build may link that library instead of this one. Shared by all functions:
///
/// - Lengths and counts are in elements. `_I` works in place: the last array is source and
///   destination. Arrays need no alignment beyond that of their element and, unless a function says
///   otherwise, source and destination are the same array or do not overlap.
/// - Each returns a status: ippStsNoErr (0), ippStsNullPtrErr for a null array, ippStsSizeErr for a
///   length below 1, or what its own comment names. On an error nothing is written.
/// - Only the Malloc, InitAlloc and matching Free families touch the heap or take a lock. All the
///   rest run on their caller's thread, and may run on many at once over different arrays.
/// - Not-a-number and infinity go through as plain arithmetic gives them.

using Ipp8u = unsigned char;
using Ipp32s = int;
using Ipp32f = float;
using Ipp64f = double;
using Ipp32fc = Velmora::complex<float>;
using Ipp64fc = Velmora::complex<double>;

/// Result of a call: 0 is success, negative values are errors.
enum IppStatus : int {
    ippStsIIRGenOrderErr = -225,     // designed filter order outside 1..12
    ippStsFilterFrequencyErr = -224, // cut-off outside 0 < f < 0.5
    ippStsToneMagnErr = -46,         // tone magnitude not above 0
    ippStsToneFreqErr = -45,         // tone frequency outside 0..1
    ippStsTonePhaseErr = -44,        // tone phase outside 0..2 pi
    ippStsIIROrderErr = -25,         // order of a filter below 1
    ippStsFftFlagErr = -16,          // unknown normalisation of a transform
    ippStsFftOrderErr = -15,         // transform order negative or too large
    ippStsDivByZeroErr = -10,        // leading denominator tap is zero
    ippStsMemAllocErr = -9,
    ippStsNullPtrErr = -8,
    ippStsSizeErr = -6,
    ippStsBadArgErr = -5, // filter type or ripple
    ippStsNoErr = 0,
    ippStsOk = ippStsNoErr,
};

/// Trade of speed against accuracy. Everything here is always accurate; the value is accepted.
enum IppHintAlgorithm : int {
    ippAlgHintNone = 0,
    ippAlgHintFast = 1,
    ippAlgHintAccurate = 2,
};

/// Where a transform of N points divides; exactly one of these.
enum : int {
    IPP_FFT_DIV_FWD_BY_N = 1, // forward by N, inverse not
    IPP_FFT_DIV_INV_BY_N = 2, // inverse by N, forward not
    IPP_FFT_DIV_BY_SQRTN = 4, // both by sqrt(N)
    IPP_FFT_NODIV_BY_ANY = 8, // neither
};

/// Prototype of a designed filter.
enum IppsIIRFilterType : int {
    ippButterworth = 0,
    ippChebyshev1 = 1,
};

struct IppsFFTSpec_C_32fc;
struct IppsFFTSpec_C_64fc;
struct IppsIIRState_64f;

// Set-up and status ------------------------------------------------------------------------------

/// The code path is chosen by the loader for the processor at hand; nothing is left to do. Always
/// succeeds, any number of times.
IppStatus ippInit();

/// English text of a status, never null, of static storage.
const char *ippGetStatusString(IppStatus status);

// Memory -----------------------------------------------------------------------------------------

/// An array of len elements on a 64-byte boundary, its contents undefined. Null if len is below 1
/// or memory is short. Released by ippsFree.
Ipp8u *ippsMalloc_8u(int len);
Ipp32f *ippsMalloc_32f(int len);
Ipp32fc *ippsMalloc_32fc(int len);
Ipp64f *ippsMalloc_64f(int len);
Ipp64fc *ippsMalloc_64fc(int len);

/// Releases an array of the Malloc family; null is ignored.
void ippsFree(void *ptr);

// Complex FFT ------------------------------------------------------------------------------------

/// Makes the set-up of a transform over 2^order complex points. Orders are 0..26 in single
/// and 0..25 in double precision (ippStsFftOrderErr); flag is one of IPP_FFT_...
/// (ippStsFftFlagErr). Plans are shared by order: only the first set-up of an order pays for
/// the planning. Any thread; one set-up may be used from many threads at once.
IppStatus ippsFFTInitAlloc_C_32fc(
    IppsFFTSpec_C_32fc **ppFFTSpec, int order, int flag, IppHintAlgorithm hint);
IppStatus ippsFFTInitAlloc_C_64fc(
    IppsFFTSpec_C_64fc **ppFFTSpec, int order, int flag, IppHintAlgorithm hint);

/// Releases a set-up. The plan of its order stays for the next one.
IppStatus ippsFFTFree_C_32fc(IppsFFTSpec_C_32fc *pFFTSpec);
IppStatus ippsFFTFree_C_64fc(IppsFFTSpec_C_64fc *pFFTSpec);

/// Size of the work buffer in bytes, above 0. A buffer serves one thread at a time and needs no
/// alignment. Null is accepted instead; small transforms are then some 3 times slower, as are those
/// of data that are not on a 16-byte boundary.
IppStatus ippsFFTGetBufSize_C_32fc(const IppsFFTSpec_C_32fc *pFFTSpec, int *pBufferSize);
IppStatus ippsFFTGetBufSize_C_64fc(const IppsFFTSpec_C_64fc *pFFTSpec, int *pBufferSize);

/// X[k] = scale * sum x[n] exp(-j 2 pi k n / N), in place, scale by the flag.
IppStatus ippsFFTFwd_CToC_32fc_I(
    Ipp32fc *pSrcDst, const IppsFFTSpec_C_32fc *pFFTSpec, Ipp8u *pBuffer);
IppStatus ippsFFTFwd_CToC_64fc_I(
    Ipp64fc *pSrcDst, const IppsFFTSpec_C_64fc *pFFTSpec, Ipp8u *pBuffer);

/// x[n] = scale * sum X[k] exp(+j 2 pi k n / N), in place, scale by the flag.
IppStatus ippsFFTInv_CToC_32fc_I(
    Ipp32fc *pSrcDst, const IppsFFTSpec_C_32fc *pFFTSpec, Ipp8u *pBuffer);
IppStatus ippsFFTInv_CToC_64fc_I(
    Ipp64fc *pSrcDst, const IppsFFTSpec_C_64fc *pFFTSpec, Ipp8u *pBuffer);

/// The same into another array, which must not overlap the source. The source keeps its content and
/// the work buffer is not used: the cheapest form, if both are on a 16-byte boundary and the scale
/// is 1.
IppStatus ippsFFTFwd_CToC_32fc(
    const Ipp32fc *pSrc, Ipp32fc *pDst, const IppsFFTSpec_C_32fc *pFFTSpec, Ipp8u *pBuffer);
IppStatus ippsFFTFwd_CToC_64fc(
    const Ipp64fc *pSrc, Ipp64fc *pDst, const IppsFFTSpec_C_64fc *pFFTSpec, Ipp8u *pBuffer);
IppStatus ippsFFTInv_CToC_32fc(
    const Ipp32fc *pSrc, Ipp32fc *pDst, const IppsFFTSpec_C_32fc *pFFTSpec, Ipp8u *pBuffer);
IppStatus ippsFFTInv_CToC_64fc(
    const Ipp64fc *pSrc, Ipp64fc *pDst, const IppsFFTSpec_C_64fc *pFFTSpec, Ipp8u *pBuffer);

// Vector arithmetic ------------------------------------------------------------------------------

/// pSrcDst[n] += pSrc[n]
IppStatus ippsAdd_32f_I(const Ipp32f *pSrc, Ipp32f *pSrcDst, int len);
IppStatus ippsAdd_32fc_I(const Ipp32fc *pSrc, Ipp32fc *pSrcDst, int len);
IppStatus ippsAdd_64fc_I(const Ipp64fc *pSrc, Ipp64fc *pSrcDst, int len);

/// pSrcDst[n] += val
IppStatus ippsAddC_32f_I(Ipp32f val, Ipp32f *pSrcDst, int len);

/// pSrcDst[n] *= pSrc[n], a complex product for complex arrays.
IppStatus ippsMul_32f_I(const Ipp32f *pSrc, Ipp32f *pSrcDst, int len);
IppStatus ippsMul_64f_I(const Ipp64f *pSrc, Ipp64f *pSrcDst, int len);
IppStatus ippsMul_32fc_I(const Ipp32fc *pSrc, Ipp32fc *pSrcDst, int len);
IppStatus ippsMul_64fc_I(const Ipp64fc *pSrc, Ipp64fc *pSrcDst, int len);

/// pDst[n] = pSrc1[n] * pSrc2[n]; all 24 bits of the mantissa are right. Any two may be one array.
IppStatus ippsMul_32f_A24(const Ipp32f *pSrc1, const Ipp32f *pSrc2, Ipp32f *pDst, Ipp32s len);

/// pSrcDst[n] *= val
IppStatus ippsMulC_32f_I(Ipp32f val, Ipp32f *pSrcDst, int len);
IppStatus ippsMulC_64f_I(Ipp64f val, Ipp64f *pSrcDst, int len);
IppStatus ippsMulC_32fc_I(Ipp32fc val, Ipp32fc *pSrcDst, int len);
IppStatus ippsMulC_64fc_I(Ipp64fc val, Ipp64fc *pSrcDst, int len);

/// Largest element with its sign (not the largest magnitude). The place of a not-a-number decides
/// whether it counts; keep them out.
IppStatus ippsMax_32f(const Ipp32f *pSrc, int len, Ipp32f *pMax);
IppStatus ippsMax_64f(const Ipp64f *pSrc, int len, Ipp64f *pMax);

/// Sum, and sum divided by len.
IppStatus ippsSum_64f(const Ipp64f *pSrc, int len, Ipp64f *pSum);
IppStatus ippsMean_64f(const Ipp64f *pSrc, int len, Ipp64f *pMean);

/// pSrcDst[n] = pSrcDst[n]^2
IppStatus ippsSqr_64f_I(Ipp64f *pSrcDst, int len);

/// pSrcDst[n] = sqrt(pSrcDst[n]), correctly rounded; a negative element gives not-a-number.
IppStatus ippsSqrt_32f_I(Ipp32f *pSrcDst, int len);

/// pDst[n] = sqrt(re^2 + im^2). Parts above 1e154 overflow and below 1e-154 underflow in the
/// square.
IppStatus ippsMagnitude_64fc(const Ipp64fc *pSrc, Ipp64f *pDst, int len);

/// pDst[n] = re^2 + im^2
IppStatus ippsPowerSpectr_32fc(const Ipp32fc *pSrc, Ipp32f *pDst, int len);
IppStatus ippsPowerSpectr_64fc(const Ipp64fc *pSrc, Ipp64f *pDst, int len);

/// pDst[n] = log10(pSrc[n]) with at least 11 right bits, denormals included. Zero gives minus
/// infinity, a negative element not-a-number. Source and destination may be one array.
IppStatus ippsLog10_32f_A11(const Ipp32f *pSrc, Ipp32f *pDst, Ipp32s len);

/// pDst[n] = sin(pSrc[n]), radians, with at least 26 right bits for any finite angle; infinity
/// gives not-a-number. Source and destination may be one array.
IppStatus ippsSin_64f_A26(const Ipp64f *pSrc, Ipp64f *pDst, Ipp32s len);

/// pDst[n] = pSrc[n] rounded to single precision.
IppStatus ippsConvert_64f32f(const Ipp64f *pSrc, Ipp32f *pDst, int len);

// Moves ------------------------------------------------------------------------------------------

/// Clears an array.
IppStatus ippsZero_32f(Ipp32f *pDst, int len);
IppStatus ippsZero_32fc(Ipp32fc *pDst, int len);
IppStatus ippsZero_64f(Ipp64f *pDst, int len);
IppStatus ippsZero_64fc(Ipp64fc *pDst, int len);

/// Fills an array with a value.
IppStatus ippsSet_32f(Ipp32f val, Ipp32f *pDst, int len);
IppStatus ippsSet_64f(Ipp64f val, Ipp64f *pDst, int len);

/// Copies an array; source and destination must not overlap.
IppStatus ippsCopy_32f(const Ipp32f *pSrc, Ipp32f *pDst, int len);
IppStatus ippsCopy_32fc(const Ipp32fc *pSrc, Ipp32fc *pDst, int len);
IppStatus ippsCopy_64fc(const Ipp64fc *pSrc, Ipp64fc *pDst, int len);

/// Copies an array; source and destination may overlap either way.
IppStatus ippsMove_64fc(const Ipp64fc *pSrc, Ipp64fc *pDst, int len);

/// Splits into real and imaginary parts.
IppStatus ippsCplxToReal_32fc(const Ipp32fc *pSrc, Ipp32f *pDstRe, Ipp32f *pDstIm, int len);
IppStatus ippsCplxToReal_64fc(const Ipp64fc *pSrc, Ipp64f *pDstRe, Ipp64f *pDstIm, int len);

/// Joins real and imaginary parts; a null array counts as zeros, but not both.
IppStatus ippsRealToCplx_32f(const Ipp32f *pSrcRe, const Ipp32f *pSrcIm, Ipp32fc *pDst, int len);
IppStatus ippsRealToCplx_64f(const Ipp64f *pSrcRe, const Ipp64f *pSrcIm, Ipp64fc *pDst, int len);

// Oscillator -------------------------------------------------------------------------------------

/// pDst[n] = magn * exp(j (2 pi rFreq n + *pPhase)).
///
/// magn above 0 (ippStsToneMagnErr), rFreq 0..1 cycles per sample (ippStsToneFreqErr), phase 0..2
/// pi radians (ippStsTonePhaseErr). On return *pPhase is the phase of the sample after the last
/// one, 0 <= phase < 2 pi, so the next call runs on without a seam, whatever the block lengths.
IppStatus ippsTone_Direct_64fc(
    Ipp64fc *pDst, int len, Ipp64f magn, Ipp64f rFreq, Ipp64f *pPhase, IppHintAlgorithm hint);

// IIR filters ------------------------------------------------------------------------------------

/// Designs a digital low-pass or high-pass by the bilinear transform with a prewarped cut-off.
///
/// rFreq: cut-off in cycles per sample, 0 < rFreq < 0.5 (ippStsFilterFrequencyErr).
/// ripple: pass-band ripple in dB of ippChebyshev1, above 0 (ippStsBadArgErr), which is also the
/// loss at its cut-off; ignored by ippButterworth, which loses 3 dB there.
/// order: 1..12 (ippStsIIRGenOrderErr).
/// pTaps: 2 (order + 1) values, b[0]..b[order], a[0]..a[order] with a[0] = 1.
IppStatus ippsIIRGenLowpass_64f(
    Ipp64f rFreq, Ipp64f ripple, int order, Ipp64f *pTaps, IppsIIRFilterType filterType);
IppStatus ippsIIRGenHighpass_64f(
    Ipp64f rFreq, Ipp64f ripple, int order, Ipp64f *pTaps, IppsIIRFilterType filterType);

/// Makes a filter y = (b / a) x of an order of 1 or more (ippStsIIROrderErr).
///
/// pTaps: 2 (order + 1) values, b[0]..b[order], a[0]..a[order]; all are divided by a[0], which must
/// not be 0 (ippStsDivByZeroErr). pDlyLine: order initial values of the delays of the transposed
/// direct form II, null for silence. Both are copied.
IppStatus ippsIIRInitAlloc_64f(
    IppsIIRState_64f **ppState, const Ipp64f *pTaps, int order, const Ipp64f *pDlyLine);

/// Filters in place; the delays run on from call to call. One thread at a time per state.
IppStatus ippsIIR_64f_I(Ipp64f *pSrcDst, int len, IppsIIRState_64f *pState);

/// Releases a filter.
IppStatus ippsIIRFree_64f(IppsIIRState_64f *pState);
