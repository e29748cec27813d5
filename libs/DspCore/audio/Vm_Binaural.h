// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Velmora::CppDsp
{
/// Delays the imaginary part (the right ear) against the real part, which gives a mono signal
/// width.
///
/// Not thread-safe; the owner serialises.
template <typename T>
class Vm_Binaural
{
public:
    Vm_Binaural() { setDelay(mDelayMs); }

    /// Milliseconds at the construction rate of 48 kHz, limited to 0.0..20.0. Empties the line.
    void setDelay(T ms)
    {
        mDelayMs = std::clamp(ms, T(0), T(20));
        setDelaySamples(static_cast<std::size_t>(mDelayMs * kSampleRate / T(1000)));
    }

    /// The delay in samples, whatever the rate. Empties the line.
    void setDelaySamples(std::size_t samples)
    {
        mLine.assign(samples, T(0));
        mPosition = 0;
    }
    std::size_t delaySamples() const { return mLine.size(); }

    /// A change empties the line, which keeps its length.
    void setOn(bool on)
    {
        if (mOn == on)
            return;
        mOn = on;
        std::fill(mLine.begin(), mLine.end(), T(0));
    }
    bool on() const { return mOn; }

    /// In place, any length. Allocates nothing.
    void process(complex<T> *buffer, unsigned long length)
    {
        if (!mOn || mLine.empty())
            return;
        for (unsigned long n = 0; n < length; ++n) {
            std::swap(buffer[n].im, mLine[mPosition]);
            mPosition = mPosition + 1 < mLine.size() ? mPosition + 1 : 0;
        }
    }

private:
    static constexpr T kSampleRate = 48000;

    bool mOn = false;
    T mDelayMs = 16;
    std::vector<T> mLine;
    std::size_t mPosition = 0;
};
} // namespace Velmora::CppDsp
