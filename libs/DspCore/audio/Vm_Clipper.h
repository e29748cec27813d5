// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <algorithm>
#include <cmath>

namespace Velmora::CppDsp
{
/// The last stage before the audio leaves: keeps every part of a sample within -1.0..1.0.
///
/// Mode 0 limits hard. Any other mode bends a part by its level in dB: below the knee (-2 dB) it
/// passes, within the knee (-2..2 dB) it follows a square law, above it comes out at 0 dB. Holds no
/// state; settings are fixed at construction. Not thread-safe.
template <typename T>
class Vm_Clipper
{
public:
    explicit Vm_Clipper(bool on = true, int mode = 0, T inputAttenuationDb = 0, T outputGainDb = 0)
        : mOn(on), mMode(mode), mInputScale(std::pow(T(10), inputAttenuationDb / T(-20))),
          mOutputScale(std::pow(T(10), outputGainDb / T(20)))
    { }

    /// In place, any length. Allocates nothing.
    void process(complex<T> *buffer, unsigned int length) const
    {
        if (!mOn)
            return;
        T *const parts = &buffer->re;
        const unsigned int count = 2 * length;
        if (mMode == 0) {
            for (unsigned int i = 0; i < count; ++i)
                parts[i] = hard(parts[i] * mInputScale) * mOutputScale;
        } else {
            for (unsigned int i = 0; i < count; ++i)
                parts[i] = soft(parts[i] * mInputScale) * mOutputScale;
        }
    }

private:
    static constexpr T kKneeStartDb = -2;
    static constexpr T kKneeEndDb = 2;
    static constexpr T kKneeDepthDb = -2;
    static constexpr T kKneeSlope = T(1) / (kKneeEndDb - kKneeStartDb);
    static constexpr T kFloor = T(1e-10);

    static T hard(T v) { return v > T(1) ? T(1) : (v < T(-1) ? T(-1) : v); }

    static T soft(T v)
    {
        const T in = T(20) * std::log10(std::max(std::abs(v), kFloor));
        return v * std::pow(T(10), (shape(in) - in) / T(20));
    }

    static T shape(T db)
    {
        if (db < kKneeStartDb)
            return db;
        if (db <= kKneeEndDb) {
            const T distance = T(1) - (db - kKneeStartDb) * kKneeSlope;
            return distance * distance * kKneeDepthDb;
        }
        return db >= T(0) ? T(0) : db;
    }

    bool mOn;
    int mMode;
    T mInputScale;
    T mOutputScale;
};
} // namespace Velmora::CppDsp
