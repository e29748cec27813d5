// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/kernel.h"

#include <fftw3.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <dlfcn.h>
#include <memory>
#include <mutex>
#include <new>
#include <type_traits>
#include <utility>

using Velmora::complex;

// The one source that knows FFTW. How the transforms are planned was measured on a processor with
// AVX-512:
//
// - Plans are estimates. Up to 2048 points, where all transforms of a running stream are, measured
//   plans gain nothing in double and 15 % at most in single precision, and 10 to 50 % above. But
//   the search costs 20 to 500 ms a size, which a listener would hear, and ends with another plan
//   on a busy machine. Estimates take 0.05 to 0.5 ms, and every run of the program gets the same
//   plans and gives the same bits.
// - The sizes of the receiver are planned at the first use of a precision, so that a change of
//   filter or picture in a running stream plans nothing.
// - As long as the data stay in the near caches, transforming into the caller's work buffer and
//   scaling on the way back costs less than an in-place plan: 0.7 times in double, half in single
//   precision. From 8192 points on it is the other way round.

namespace
{
constexpr unsigned kEstimated = FFTW_ESTIMATE | FFTW_NO_BUFFERING | FFTW_NO_INDIRECT_OP;
constexpr int kLargestBufferedOrder = 12;

// A cache line. FFTW itself wants 16 bytes.
constexpr std::size_t kAlignment = 64;

/// The library of one precision under common names.
template <typename T>
struct Fftw;

template <>
struct Fftw<double>
{
    using Plan = fftw_plan;
    static constexpr int kLargestPreparedOrder = 14; // of a filter of 7935 taps
    static constexpr int kLargestOrder = 25;

    static Plan plan(int size, complex<double> *in, complex<double> *out, int sign, unsigned flags)
    {
        return fftw_plan_dft_1d(size, raw(in), raw(out), sign, flags);
    }
    static void execute(Plan plan, complex<double> *in, complex<double> *out)
    {
        fftw_execute_dft(plan, raw(in), raw(out));
    }
    static void destroy(Plan plan) { fftw_destroy_plan(plan); }
    static void *address() { return reinterpret_cast<void *>(&fftw_plan_dft_1d); }
    static bool aligned(complex<double> *data) { return fftw_alignment_of(&data->re) == 0; }

private:
    static fftw_complex *raw(complex<double> *data)
    {
        return reinterpret_cast<fftw_complex *>(data);
    }
};

template <>
struct Fftw<float>
{
    using Plan = fftwf_plan;
    static constexpr int kLargestPreparedOrder = 16; // of the widest panorama
    static constexpr int kLargestOrder = 26;

    static Plan plan(int size, complex<float> *in, complex<float> *out, int sign, unsigned flags)
    {
        return fftwf_plan_dft_1d(size, raw(in), raw(out), sign, flags);
    }
    static void execute(Plan plan, complex<float> *in, complex<float> *out)
    {
        fftwf_execute_dft(plan, raw(in), raw(out));
    }
    static void destroy(Plan plan) { fftwf_destroy_plan(plan); }
    static void *address() { return reinterpret_cast<void *>(&fftwf_plan_dft_1d); }
    static bool aligned(complex<float> *data) { return fftwf_alignment_of(&data->re) == 0; }

private:
    static fftwf_complex *raw(complex<float> *data)
    {
        return reinterpret_cast<fftwf_complex *>(data);
    }
};

PROCESSOR_CLONES
void scale(const double *src, double *dst, std::int64_t count, double factor)
{
#pragma GCC ivdep
    for (std::int64_t n = 0; n < count; ++n)
        dst[n] = src[n] * factor;
}

PROCESSOR_CLONES
void scale(const float *src, float *dst, std::int64_t count, float factor)
{
#pragma GCC ivdep
    for (std::int64_t n = 0; n < count; ++n)
        dst[n] = src[n] * factor;
}

/// The plans of one direction and size, for any pointer. Runs on many threads at once.
template <typename T>
class Transform
{
public:
    /// Plans; the caller holds the planner's lock. Returns false if memory is short. Leaves the
    /// content of the two arrays of 2^order elements alone.
    bool plan(int order, int sign, complex<T> *in, complex<T> *out)
    {
        const int size = 1 << order;
        m_buffered = order <= kLargestBufferedOrder;
        m_main.reset(Fftw<T>::plan(size, in, m_buffered ? out : in, sign, kEstimated));
        m_anyAddress.reset(Fftw<T>::plan(size, in, in, sign, kEstimated | FFTW_UNALIGNED));
        m_count = 2 * std::int64_t(size);
        return m_main && m_anyAddress;
    }

    /// Transforms in place and multiplies by factor. buffer is an aligned work array or null.
    void execute(complex<T> *data, complex<T> *buffer, T factor) const
    {
        const bool asPlanned = Fftw<T>::aligned(data) && (buffer != nullptr || !m_buffered);
        if (asPlanned && m_buffered) {
            Fftw<T>::execute(m_main.get(), data, buffer);
            scale(&buffer->re, &data->re, m_count, factor);
            return;
        }
        Fftw<T>::execute((asPlanned ? m_main : m_anyAddress).get(), data, data);
        if (factor != T(1))
            scale(&data->re, &data->re, m_count, factor);
    }

    /// Transforms into an array that does not overlap the input, and multiplies by factor.
    void execute(const complex<T> *in, complex<T> *out, T factor) const
    {
        // A transform into another array leaves its input alone.
        auto *const source = const_cast<complex<T> *>(in);
        if (m_buffered && Fftw<T>::aligned(source) && Fftw<T>::aligned(out)) {
            Fftw<T>::execute(m_main.get(), source, out);
            if (factor != T(1))
                scale(&out->re, &out->re, m_count, factor);
            return;
        }
        std::copy_n(in, m_count / 2, out);
        execute(out, nullptr, factor);
    }

private:
    struct Destroy
    {
        void operator()(typename Fftw<T>::Plan plan) const { Fftw<T>::destroy(plan); }
    };
    using PlanPtr = std::unique_ptr<std::remove_pointer_t<typename Fftw<T>::Plan>, Destroy>;

    bool m_buffered = false; // m_main goes into the work buffer instead of running in place
    PlanPtr m_main;          // of data on FFTW's alignment
    PlanPtr m_anyAddress;    // of all else, some 3 times slower
    std::int64_t m_count = 0;
};

template <typename T>
struct Plans
{
    Transform<T> forward;
    Transform<T> inverse;
};

/// Keeps the library in the process. It would go with a plugin that is unloaded, leave the memory
/// of its planner behind, and start anew with the next plugin.
template <typename T>
void keepLibrary()
{
    Dl_info library;
    if (dladdr(Fftw<T>::address(), &library) != 0)
        dlopen(library.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
}

template <typename T>
using SharedPlans = std::shared_ptr<const Plans<T>>;

// FFTW's planner serves one thread at a time, the two precisions included for the sake of one rule.
std::mutex &plannerLock()
{
    static std::mutex lock;
    return lock;
}

/// Null or std::bad_alloc if memory is short. Any thread.
template <typename T>
SharedPlans<T> newPlans(int order)
{
    const std::lock_guard locked(plannerLock());
    // Uninitialised, and untouched by an estimate: a large order costs address space only.
    const std::size_t size = std::size_t(1) << order;
    const std::align_val_t alignment{kAlignment};
    const auto free = [=](void *array) { ::operator delete(array, alignment); };
    const std::unique_ptr<void, decltype(free)> in(
        ::operator new(size * sizeof(complex<T>), alignment), free);
    const std::unique_ptr<void, decltype(free)> out(
        ::operator new(size * sizeof(complex<T>), alignment), free);
    auto plans = std::make_shared<Plans<T>>();
    auto *first = static_cast<complex<T> *>(in.get());
    auto *second = static_cast<complex<T> *>(out.get());
    if (!plans->forward.plan(order, FFTW_FORWARD, first, second)
        || !plans->inverse.plan(order, FFTW_BACKWARD, first, second))
        return nullptr;
    return plans;
}

template <typename T>
using PreparedPlans = std::array<SharedPlans<T>, Fftw<T>::kLargestPreparedOrder + 1>;

template <typename T>
PreparedPlans<T> preparePlans()
{
    keepLibrary<T>();
    PreparedPlans<T> plans;
    for (std::size_t order = 0; order < plans.size(); ++order)
        plans[order] = newPlans<T>(int(order));
    return plans;
}

/// The plans of an order. The prepared ones are made at the first call and kept, so that later
/// calls plan nothing and wait for nobody who plans. Null or std::bad_alloc if memory is short. Any
/// thread.
template <typename T>
SharedPlans<T> sharedPlans(int order)
{
    static const PreparedPlans<T> prepared = preparePlans<T>();
    return std::size_t(order) < prepared.size() ? prepared[std::size_t(order)] : newPlans<T>(order);
}

template <typename T>
struct Spec
{
    std::shared_ptr<const Plans<T>> plans;
    T forwardFactor;
    T inverseFactor;
    int bufferSize; // bytes
};

// Room for the transform and for moving its start to the next cache line.
template <typename T>
int bufferSize(int order)
{
    const bool buffered = order <= kLargestBufferedOrder;
    return static_cast<int>(kAlignment + (buffered ? sizeof(complex<T>) << order : 0));
}

template <typename T>
complex<T> *alignedArray(Ipp8u *buffer)
{
    const auto address = reinterpret_cast<std::uintptr_t>(buffer);
    const auto skip = (kAlignment - address % kAlignment) % kAlignment;
    return buffer == nullptr ? nullptr : reinterpret_cast<complex<T> *>(buffer + skip);
}
} // namespace

struct IppsFFTSpec_C_64fc : Spec<double>
{ };

struct IppsFFTSpec_C_32fc : Spec<float>
{ };

namespace
{
template <typename T, typename FftSpec>
IppStatus initAlloc(FftSpec **result, int order, int flag)
{
    if (result == nullptr)
        return ippStsNullPtrErr;
    if (order < 0 || order > Fftw<T>::kLargestOrder)
        return ippStsFftOrderErr;
    const T size = std::ldexp(T(1), order);
    T forward = 1;
    T inverse = 1;
    switch (flag) {
    case IPP_FFT_DIV_FWD_BY_N:
        forward = 1 / size;
        break;
    case IPP_FFT_DIV_INV_BY_N:
        inverse = 1 / size;
        break;
    case IPP_FFT_DIV_BY_SQRTN:
        forward = inverse = 1 / std::sqrt(size);
        break;
    case IPP_FFT_NODIV_BY_ANY:
        break;
    default:
        return ippStsFftFlagErr;
    }
    try {
        auto plans = sharedPlans<T>(order);
        if (!plans)
            return ippStsMemAllocErr;
        *result = new FftSpec{{std::move(plans), forward, inverse, bufferSize<T>(order)}};
    } catch (const std::bad_alloc &) {
        return ippStsMemAllocErr;
    }
    return ippStsNoErr;
}

template <typename FftSpec>
IppStatus release(FftSpec *spec)
{
    if (spec == nullptr)
        return ippStsNullPtrErr;
    delete spec;
    return ippStsNoErr;
}

template <typename FftSpec>
IppStatus reportBufferSize(const FftSpec *spec, int *size)
{
    if (spec == nullptr || size == nullptr)
        return ippStsNullPtrErr;
    *size = spec->bufferSize;
    return ippStsNoErr;
}

template <typename T>
IppStatus forward(complex<T> *data, const Spec<T> *spec, Ipp8u *buffer)
{
    if (data == nullptr || spec == nullptr)
        return ippStsNullPtrErr;
    spec->plans->forward.execute(data, alignedArray<T>(buffer), spec->forwardFactor);
    return ippStsNoErr;
}

template <typename T>
IppStatus forward(const complex<T> *src, complex<T> *dst, const Spec<T> *spec)
{
    if (src == nullptr || dst == nullptr || spec == nullptr)
        return ippStsNullPtrErr;
    spec->plans->forward.execute(src, dst, spec->forwardFactor);
    return ippStsNoErr;
}

template <typename T>
IppStatus inverse(const complex<T> *src, complex<T> *dst, const Spec<T> *spec)
{
    if (src == nullptr || dst == nullptr || spec == nullptr)
        return ippStsNullPtrErr;
    spec->plans->inverse.execute(src, dst, spec->inverseFactor);
    return ippStsNoErr;
}

template <typename T>
IppStatus inverse(complex<T> *data, const Spec<T> *spec, Ipp8u *buffer)
{
    if (data == nullptr || spec == nullptr)
        return ippStsNullPtrErr;
    spec->plans->inverse.execute(data, alignedArray<T>(buffer), spec->inverseFactor);
    return ippStsNoErr;
}
} // namespace

IppStatus ippsFFTInitAlloc_C_32fc(
    IppsFFTSpec_C_32fc **ppFFTSpec, int order, int flag, IppHintAlgorithm)
{
    return initAlloc<float>(ppFFTSpec, order, flag);
}

IppStatus ippsFFTInitAlloc_C_64fc(
    IppsFFTSpec_C_64fc **ppFFTSpec, int order, int flag, IppHintAlgorithm)
{
    return initAlloc<double>(ppFFTSpec, order, flag);
}

IppStatus ippsFFTFree_C_32fc(IppsFFTSpec_C_32fc *pFFTSpec)
{
    return release(pFFTSpec);
}

IppStatus ippsFFTFree_C_64fc(IppsFFTSpec_C_64fc *pFFTSpec)
{
    return release(pFFTSpec);
}

IppStatus ippsFFTGetBufSize_C_32fc(const IppsFFTSpec_C_32fc *pFFTSpec, int *pBufferSize)
{
    return reportBufferSize(pFFTSpec, pBufferSize);
}

IppStatus ippsFFTGetBufSize_C_64fc(const IppsFFTSpec_C_64fc *pFFTSpec, int *pBufferSize)
{
    return reportBufferSize(pFFTSpec, pBufferSize);
}

IppStatus ippsFFTFwd_CToC_32fc_I(
    Ipp32fc *pSrcDst, const IppsFFTSpec_C_32fc *pFFTSpec, Ipp8u *pBuffer)
{
    return forward<float>(pSrcDst, pFFTSpec, pBuffer);
}

IppStatus ippsFFTFwd_CToC_64fc_I(
    Ipp64fc *pSrcDst, const IppsFFTSpec_C_64fc *pFFTSpec, Ipp8u *pBuffer)
{
    return forward<double>(pSrcDst, pFFTSpec, pBuffer);
}

IppStatus ippsFFTInv_CToC_32fc_I(
    Ipp32fc *pSrcDst, const IppsFFTSpec_C_32fc *pFFTSpec, Ipp8u *pBuffer)
{
    return inverse<float>(pSrcDst, pFFTSpec, pBuffer);
}

IppStatus ippsFFTInv_CToC_64fc_I(
    Ipp64fc *pSrcDst, const IppsFFTSpec_C_64fc *pFFTSpec, Ipp8u *pBuffer)
{
    return inverse<double>(pSrcDst, pFFTSpec, pBuffer);
}

IppStatus ippsFFTFwd_CToC_32fc(
    const Ipp32fc *pSrc, Ipp32fc *pDst, const IppsFFTSpec_C_32fc *pFFTSpec, Ipp8u *)
{
    return forward<float>(pSrc, pDst, pFFTSpec);
}

IppStatus ippsFFTFwd_CToC_64fc(
    const Ipp64fc *pSrc, Ipp64fc *pDst, const IppsFFTSpec_C_64fc *pFFTSpec, Ipp8u *)
{
    return forward<double>(pSrc, pDst, pFFTSpec);
}

IppStatus ippsFFTInv_CToC_32fc(
    const Ipp32fc *pSrc, Ipp32fc *pDst, const IppsFFTSpec_C_32fc *pFFTSpec, Ipp8u *)
{
    return inverse<float>(pSrc, pDst, pFFTSpec);
}

IppStatus ippsFFTInv_CToC_64fc(
    const Ipp64fc *pSrc, Ipp64fc *pDst, const IppsFFTSpec_C_64fc *pFFTSpec, Ipp8u *)
{
    return inverse<double>(pSrc, pDst, pFFTSpec);
}
