// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/kernel.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

using signal_primitives::check;

/// A filter in transposed direct form II (Oppenheim and Schafer, Discrete-Time Signal Processing,
/// 6.3.4), the taps divided by a[0]:
///
///     y = b[0] x + d[0]
///     d[i] = b[i+1] x - a[i+1] y + d[i+1],   i = 0..order-1, d[order] = 0
struct IppsIIRState_64f
{
    int order;
    // b[0]..b[order], a[0]..a[order], d[0]..d[order - 1]
    std::unique_ptr<double[]> values;

    const double *b() const { return values.get(); }
    const double *a() const { return b() + order + 1; }
    double *d() const { return values.get() + 2 * (order + 1); }
};

namespace
{
// One step over any order; d holds order + 1 elements, the last one 0.
[[gnu::always_inline]] inline double step(
    double x, int order, const double *b, const double *a, double *d)
{
    const double y = b[0] * x + d[0];
    for (int i = 0; i < order; ++i)
        d[i] = d[i + 1] + b[i + 1] * x - a[i + 1] * y;
    return y;
}

// With the order known to the compiler, taps and delays stay in registers over the block.
template <int Order>
[[gnu::always_inline]] inline void runUnrolled(
    double *srcDst, int len, const IppsIIRState_64f &state)
{
    double b[Order + 1];
    double a[Order + 1];
    double d[Order + 1] = {};
    std::copy_n(state.b(), Order + 1, b);
    std::copy_n(state.a(), Order + 1, a);
    std::copy_n(state.d(), Order, d);
    for (int n = 0; n < len; ++n)
        srcDst[n] = step(srcDst[n], Order, b, a, d);
    std::copy_n(d, Order, state.d());
}

[[gnu::always_inline]] inline void runAnyOrder(
    double *srcDst, int len, const IppsIIRState_64f &state)
{
    for (int n = 0; n < len; ++n)
        srcDst[n] = step(srcDst[n], state.order, state.b(), state.a(), state.d());
}

// Calls the unrolled form of the state's order, if there is one.
template <int... Below>
[[gnu::always_inline]] inline bool runIfUnrolled(
    double *srcDst, int len, const IppsIIRState_64f &state, std::integer_sequence<int, Below...>)
{
    return (
        (state.order == Below + 1 && (runUnrolled<Below + 1>(srcDst, len, state), true)) || ...);
}

// What the designs of this library reach.
using UnrolledOrders = std::make_integer_sequence<int, 12>;
} // namespace

IppStatus ippsIIRInitAlloc_64f(
    IppsIIRState_64f **ppState, const Ipp64f *pTaps, int order, const Ipp64f *pDlyLine)
{
    if (ppState == nullptr || pTaps == nullptr)
        return ippStsNullPtrErr;
    if (order < 1)
        return ippStsIIROrderErr;
    const double leading = pTaps[order + 1];
    if (leading == 0.0)
        return ippStsDivByZeroErr;

    const auto taps = 2 * (static_cast<std::size_t>(order) + 1);
    std::unique_ptr<IppsIIRState_64f> state(new (std::nothrow) IppsIIRState_64f{order, nullptr});
    // One delay more than the order, which stays 0 and closes the recursion.
    std::unique_ptr<double[]> values(new (std::nothrow) double[taps + taps / 2]());
    if (!state || !values)
        return ippStsMemAllocErr;
    std::transform(pTaps, pTaps + taps, values.get(), [=](double tap) { return tap / leading; });
    if (pDlyLine != nullptr)
        std::copy_n(pDlyLine, order, values.get() + taps);
    state->values = std::move(values);
    *ppState = state.release();
    return ippStsNoErr;
}

PROCESSOR_CLONES
IppStatus ippsIIR_64f_I(Ipp64f *pSrcDst, int len, IppsIIRState_64f *pState)
{
    if (pState == nullptr)
        return ippStsNullPtrErr;
    if (const IppStatus bad = check(len, pSrcDst))
        return bad;
    if (!runIfUnrolled(pSrcDst, len, *pState, UnrolledOrders()))
        runAnyOrder(pSrcDst, len, *pState);
    return ippStsNoErr;
}

IppStatus ippsIIRFree_64f(IppsIIRState_64f *pState)
{
    if (pState == nullptr)
        return ippStsNullPtrErr;
    delete pState;
    return ippStsNoErr;
}
