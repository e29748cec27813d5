// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/BiquadChain.h"

#include "processor/Clones.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace DspCore
{
namespace
{
using Lanes = BiquadChain::Lanes;

constexpr int kSections = BiquadChain::kSections;
constexpr int kLastSection = kSections - 1;
constexpr int kShortBlock = 32; // samples; below it the steps at both ends cost more than they save
constexpr int kTrio = 3;        // sections that a short block goes through at a time

/// Vectors of kBytes: how many, and where a section stands.
template <int kBytes>
struct Layout
{
    typedef double Vector __attribute__((vector_size(kBytes), may_alias));
    typedef long long Integers __attribute__((vector_size(kBytes)));
    static constexpr int kDoubles = kBytes / 8;
    static constexpr int kPerVector = kBytes / 16;
    static constexpr int kVectors = (kSections + kPerVector - 1) / kPerVector;

    static constexpr int lane(int section)
    {
        return section % kVectors * kDoubles + section / kVectors * 2;
    }
    static Vector &at(double *lanes, int vector)
    {
        return *reinterpret_cast<Vector *>(lanes + vector * kDoubles);
    }
    static const Vector &at(const double *lanes, int vector)
    {
        return *reinterpret_cast<const Vector *>(lanes + vector * kDoubles);
    }
};

/// One block's way through the chain.
template <int kBytes>
struct Run
{
    using L = Layout<kBytes>;
    using Vector = typename L::Vector;
    using Integers = typename L::Integers;
    static constexpr int kVectors = L::kVectors;

    Lanes &lanes;
    COMPLEX *const buffer;
    const int length;

    /// Inputs of the first vector: the sample, and the outputs of the last vector's sections, each
    /// to the section after it.
    [[gnu::always_inline]] static inline void first(COMPLEX x, const Vector &last, Vector &in)
    {
        for (int i = L::kDoubles - 1; i >= 2; --i)
            in[i] = last[i - 2];
        in[0] = x.re;
        in[1] = x.im;
    }

    /// At both ends of the block some sections have no sample; their states stay.
    [[gnu::always_inline]] inline void endStep(int t)
    {
        const COMPLEX x = t < length ? buffer[t] : COMPLEX{0.0, 0.0};
        Vector in0{};
        first(x, L::at(lanes.output, kVectors - 1), in0);
        for (int k = kVectors - 1; k >= 0; --k) {
            Integers active{};
            for (int i = 0; i < L::kDoubles; ++i) {
                const int section = k + i / 2 * kVectors;
                active[i] = section <= t && section > t - length ? -1 : 0;
            }
            const Vector in = k == 0 ? in0 : L::at(lanes.output, k - 1);
            const Vector state1 = L::at(lanes.state1, k);
            const Vector state2 = L::at(lanes.state2, k);
            const Vector y = L::at(lanes.a0, k) * in + state1;
            const Vector next1 = L::at(lanes.a1, k) * in + state2 - L::at(lanes.b1, k) * y;
            const Vector next2 = L::at(lanes.a2, k) * in - L::at(lanes.b2, k) * y;
            L::at(lanes.state1, k) = active ? next1 : state1;
            L::at(lanes.state2, k) = active ? next2 : state2;
            L::at(lanes.output, k) = y;
        }
        if (t >= kLastSection)
            give(t, lanes.output);
    }

    [[gnu::always_inline]] inline void give(int t, const double *outputs)
    {
        const double *const y = outputs + L::lane(kLastSection);
        buffer[t - kLastSection] = {y[0], y[1]};
    }

    [[gnu::always_inline]] inline void middle()
    {
        constexpr int kLastVector = kLastSection % kVectors;
        constexpr int kLastLane = kLastSection / kVectors * 2;
        Vector state1[kVectors];
        Vector state2[kVectors];
        Vector output[kVectors];
#pragma GCC unroll 18
        for (int k = 0; k < kVectors; ++k) {
            state1[k] = L::at(lanes.state1, k);
            state2[k] = L::at(lanes.state2, k);
            output[k] = L::at(lanes.output, k);
        }
        for (int t = kLastSection; t < length; ++t) {
            Vector in0{};
            first(buffer[t], output[kVectors - 1], in0);
#pragma GCC unroll 18
            for (int k = kVectors - 1; k >= 0; --k) {
                const Vector in = k == 0 ? in0 : output[k - 1];
                const Vector y = L::at(lanes.a0, k) * in + state1[k];
                state1[k] = L::at(lanes.a1, k) * in + state2[k] - L::at(lanes.b1, k) * y;
                state2[k] = L::at(lanes.a2, k) * in - L::at(lanes.b2, k) * y;
                output[k] = y;
            }
            buffer[t - kLastSection] = {
                output[kLastVector][kLastLane], output[kLastVector][kLastLane + 1]};
        }
#pragma GCC unroll 18
        for (int k = 0; k < kVectors; ++k) {
            L::at(lanes.state1, k) = state1[k];
            L::at(lanes.state2, k) = state2[k];
            L::at(lanes.output, k) = output[k];
        }
    }

    /// For blocks of more than 17 samples.
    [[gnu::always_inline]] inline void all()
    {
        for (int t = 0; t < kLastSection; ++t)
            endStep(t);
        middle();
        for (int t = length; t < length + kLastSection; ++t)
            endStep(t);
    }
};

/// A short block's way through kCount sections that follow each other, a vector for both parts of
/// each. All stands in registers, and no section waits for the one before it but at both ends.
template <int kCount>
struct ShortRun
{
    typedef double Parts __attribute__((vector_size(16), may_alias));

    Parts a0[kCount];
    Parts a1[kCount];
    Parts a2[kCount];
    Parts b1[kCount];
    Parts b2[kCount];
    Parts state1[kCount];
    Parts state2[kCount];
    Parts output[kCount];

    [[gnu::always_inline]] static inline Parts &at(double *lanes, int lane)
    {
        return *reinterpret_cast<Parts *>(lanes + lane);
    }

    [[gnu::always_inline]] inline void step(int k, Parts *samples, int t)
    {
        const Parts in = k == 0 ? samples[t] : output[k - 1];
        const Parts y = a0[k] * in + state1[k];
        state1[k] = a1[k] * in + state2[k] - b1[k] * y;
        state2[k] = a2[k] * in - b2[k] * y;
        output[k] = y;
        if (k == kCount - 1)
            samples[t - k] = y;
    }

    /// For blocks of kCount samples and more.
    template <int kBytes>
    [[gnu::always_inline]] inline void all(Lanes &lanes, int first, COMPLEX *buffer, int length)
    {
        auto *const samples = reinterpret_cast<Parts *>(buffer);
#pragma GCC unroll 3
        for (int k = 0; k < kCount; ++k) {
            const int lane = Layout<kBytes>::lane(first + k);
            a0[k] = at(lanes.a0, lane);
            a1[k] = at(lanes.a1, lane);
            a2[k] = at(lanes.a2, lane);
            b1[k] = at(lanes.b1, lane);
            b2[k] = at(lanes.b2, lane);
            state1[k] = at(lanes.state1, lane);
            state2[k] = at(lanes.state2, lane);
        }
#pragma GCC unroll 3
        for (int t = 0; t < kCount - 1; ++t) {
#pragma GCC unroll 3
            for (int k = t; k >= 0; --k)
                step(k, samples, t);
        }
        for (int t = kCount - 1; t < length; ++t) {
#pragma GCC unroll 3
            for (int k = kCount - 1; k >= 0; --k)
                step(k, samples, t);
        }
#pragma GCC unroll 3
        for (int done = 1; done < kCount; ++done) {
#pragma GCC unroll 3
            for (int k = kCount - 1; k >= done; --k)
                step(k, samples, length - 1 + done);
        }
#pragma GCC unroll 3
        for (int k = 0; k < kCount; ++k) {
            const int lane = Layout<kBytes>::lane(first + k);
            at(lanes.state1, lane) = state1[k];
            at(lanes.state2, lane) = state2[k];
        }
    }
};

/// kCount sections at a time.
template <int kBytes, int kCount>
[[gnu::always_inline]] inline void shortRuns(Lanes &lanes, COMPLEX *buffer, int length)
{
    static_assert(kSections % kCount == 0);
    for (int first = 0; first < kSections; first += kCount)
        ShortRun<kCount>{}.template all<kBytes>(lanes, first, buffer, length);
}

#if PROCESSOR_DISPATCH
#define VERSION(name) __attribute__((target(name)))
#else
#define VERSION(name)
#endif

#define CHAIN_VERSION(kBytes, name)                                                                \
    VERSION(name) int versionedLane(int section)                                                   \
    {                                                                                              \
        return Layout<kBytes>::lane(section);                                                      \
    }                                                                                              \
    VERSION(name) void versionedRun(Lanes &lanes, COMPLEX *buffer, int length)                     \
    {                                                                                              \
        if (length >= kShortBlock)                                                                 \
            Run<kBytes>{lanes, buffer, length}.all();                                              \
        else if (length >= kTrio)                                                                  \
            shortRuns<kBytes, kTrio>(lanes, buffer, length);                                       \
        else                                                                                       \
            shortRuns<kBytes, 1>(lanes, buffer, length);                                           \
    }

// A register of the widest kind would hold four sections; with the ends of a block that is slower.
CHAIN_VERSION(16, "default")
#if PROCESSOR_DISPATCH
CHAIN_VERSION(32, "arch=x86-64-v3")
CHAIN_VERSION(32, "arch=x86-64-v4")
#endif
} // namespace

BiquadChain::BiquadChain()
{
    for (int section = 0; section < kSections; ++section)
        set(section, {.a0 = 1.0});
}

void BiquadChain::set(int section, const Biquad::Coefficients &c)
{
    mFlat[std::size_t(section)] = c.a1 == c.b1 && c.a2 == c.b2
        && std::abs(c.a0 - 1.0) <= std::numeric_limits<double>::epsilon();
    const int lane = versionedLane(section);
    for (const int i : {lane, lane + 1}) {
        mLanes.a0[i] = c.a0;
        mLanes.a1[i] = c.a1;
        mLanes.a2[i] = c.a2;
        mLanes.b1[i] = c.b1;
        mLanes.b2[i] = c.b2;
        mLanes.state1[i] = 0.0;
        mLanes.state2[i] = 0.0;
    }
}

void BiquadChain::clear()
{
    std::ranges::fill(mLanes.state1, 0.0);
    std::ranges::fill(mLanes.state2, 0.0);
}

void BiquadChain::process(COMPLEX *buffer, int length)
{
    if (mFlat.all())
        return;
    versionedRun(mLanes, buffer, length);
}
} // namespace DspCore
