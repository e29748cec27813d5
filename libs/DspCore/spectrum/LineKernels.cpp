// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/LineKernels.h"

#include "DspCore/spectrum/AveragerCommon.h"
#include "processor/Clones.h"
#include "signal_primitives/Logarithm.h"

namespace DspCore
{
namespace
{
[[gnu::always_inline]] inline void powers(
    const COMPLEX32 *bins, REAL32 scale, REAL32 *line, REAL32 *copy, int size)
{
#pragma GCC ivdep
    for (int n = 0; n < size; ++n) {
        const REAL32 power = scale * (bins[n].re * bins[n].re + bins[n].im * bins[n].im);
        line[n] = power;
        copy[n] = power;
    }
}

[[gnu::always_inline]] inline REAL32 cubic(const REAL32 *y, const CubicPlaces &places, int n)
{
    return y[2] + places.weight0[n] * (y[0] - y[2]) + places.weight1[n] * (y[1] - y[2])
        + places.weight3[n] * (y[3] - y[2]);
}

[[gnu::always_inline]] inline void cubicsFrom(
    int first, const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count)
{
    for (int n = first; n < count; ++n)
        out[n] = cubic(in + places.index[n], places, n);
}

#if PROCESSOR_DISPATCH
/// A register of outputs of a line that grows lies between at most as many inputs and three more:
/// four loads, sorted to their outputs inside the register.
template <int kBytes>
[[gnu::always_inline]] inline void cubicsInRegisters(
    const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count)
{
    typedef REAL32 Reals __attribute__((vector_size(kBytes), aligned(alignof(REAL32)), may_alias));
    typedef int Places __attribute__((vector_size(kBytes), aligned(alignof(int)), may_alias));
    constexpr int kLanes = kBytes / int(sizeof(REAL32));
    const auto load = [](const REAL32 *from) __attribute__((always_inline))->const Reals &
    {
        return *reinterpret_cast<const Reals *>(from);
    };
    int n = 0;
    for (; n + kLanes <= count; n += kLanes) {
        if (places.index[n + kLanes - 1] - places.index[n] >= kLanes) {
            cubicsFrom(n, in, places, out, n + kLanes);
            continue;
        }
        const REAL32 *const y = in + places.index[n];
        const Places lane = *reinterpret_cast<const Places *>(places.index + n) - places.index[n];
        const Reals y2 = __builtin_shuffle(load(y + 2), lane);
        *reinterpret_cast<Reals *>(out + n) = y2
            + load(places.weight0 + n) * (__builtin_shuffle(load(y), lane) - y2)
            + load(places.weight1 + n) * (__builtin_shuffle(load(y + 1), lane) - y2)
            + load(places.weight3 + n) * (__builtin_shuffle(load(y + 3), lane) - y2);
    }
    cubicsFrom(n, in, places, out, count);
}

__attribute__((target("default"))) void versionedCubics(
    const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count)
{
    cubicsFrom(0, in, places, out, count);
}

__attribute__((target("arch=x86-64-v3"))) void versionedCubics(
    const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count)
{
    cubicsInRegisters<32>(in, places, out, count);
}

__attribute__((target("arch=x86-64-v4"))) void versionedCubics(
    const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count)
{
    cubicsInRegisters<64>(in, places, out, count);
}
#else
void versionedCubics(const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count)
{
    cubicsFrom(0, in, places, out, count);
}
#endif
} // namespace

PROCESSOR_CLONES
void powerLines(const COMPLEX32 *bins, REAL32 scale, REAL32 *line, REAL32 *copy, int size)
{
    const int half = size / 2;
    powers(bins + half, scale, line, copy, half);
    powers(bins, scale, line + half, copy + half, half);
}

PROCESSOR_CLONES
void powerToDb(const REAL32 *power, REAL32 *db, int size, REAL32 offset)
{
    constexpr REAL32 kDbPerBel = 10.0f;
#pragma GCC ivdep
    for (int n = 0; n < size; ++n)
        db[n] = signal_primitives::log10Of(power[n] + kPowerFloor) * kDbPerBel + offset;
}

void cubics(const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count)
{
    versionedCubics(in, places, out, count);
}
} // namespace DspCore
