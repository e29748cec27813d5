// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/agc/RunMaxima.h"
#include "DspCore/types.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace Velmora::CppDsp
{
/// Gain control with look-ahead: drives the largest part (real or imaginary) of what is coming to a
/// target level of 1.0.
///
/// A ring delays the signal by 30 attack times, so that the gain is down before a loud sample comes
/// out. Upward the gain waits for the hang time and then follows the decay; both ways it moves by
/// one-pole smoothing, pole = exp(-1000 / (ms * rate)). Switched off it is a fixed gain, smoothed
/// over 50 ms. Gains are in dB, times in ms, the rate in Hz.
///
/// The gain itself lives through clear(), so that after a fade it goes on from where it stood. Kept
/// on request, so does the newest part of the look-ahead over a change of its length. Not
/// thread-safe; the owner serialises setters and process().
template <typename T>
class Vm_Agc
{
public:
    Vm_Agc()
    {
        reserveRing();
        init();
    }

    /// Derives all dependent values from the settings and empties the ring. Allocates only after
    /// setSampleRate() to a higher rate than ever before.
    void init()
    {
        const T smootherPole = pole(kSmootherMs);
        mSmootherCoefficient = T(1) - smootherPole;
        mSmootherComplement = smootherPole;
        mAttackComplement = pole(mAttackMs);
        mAttackCoefficient = T(1) - mAttackComplement;
        mDecayComplement = pole(mDecayMs);
        mDecayCoefficient = T(1) - mDecayComplement;
        mHangSeconds = T(mHangMs) * T(0.001);
        if (mKeeps) {
            resizeRing(ringLength(mAttackMs));
            return;
        }
        mRing.resize(ringLength(mAttackMs));
        clear();
    }

    /// What waits in the look-ahead stays when a time changes. Off at first: it is emptied.
    void setKeeps(bool keeps) { mKeeps = keeps; }

    /// Empties the look-ahead; the gain and the hang counter stay.
    void clear()
    {
        std::fill(mRing.begin(), mRing.end(), complex<T>{0, 0});
        mMaxima.reset(mRing.size());
        mWrite = 0;
    }

    void setOn(bool on)
    {
        if (mKeeps && on && !mOn)
            clear(); // of the time before it was off
        mOn = on;
    }
    bool on() const { return mOn; }

    /// Limited to 0.1..5.0 ms. Starts the look-ahead and the hang anew.
    void setAttack(T ms)
    {
        mAttackMs = std::clamp(ms, T(0.1), kLongestAttackMs);
        mHangCounter = 0;
        init();
    }

    /// Limited to 1.0..3000.0 ms.
    void setDecay(T ms)
    {
        mDecayMs = std::clamp(ms, T(1), T(3000));
        init();
    }

    /// Limited to 1..3000 ms.
    void setHang(std::uint32_t ms)
    {
        mHangMs = std::clamp<std::uint32_t>(ms, 1, 3000);
        init();
    }

    /// Starts anew at another rate, with a gain of 1.0.
    void setSampleRate(T rate)
    {
        mSampleRate = rate;
        mGain = T(1);
        mSmoother = T(1);
        reserveRing();
        init();
        clear();
    }

    /// At most 120 dB, at least 1 dB above the minimum gain.
    void setMaximumGain(T db)
    {
        mMaximumGainDb = db > kHighestGainDb ? kHighestGainDb : std::max(db, mMinimumGainDb + T(1));
        mMaximumGain = linear(mMaximumGainDb);
    }

    /// Gain while switched off, limited to -60..120 dB.
    void setFixedGain(T db)
    {
        mFixedGainDb = db > kHighestGainDb ? kHighestGainDb : std::max(db, T(-60));
        mFixedGain = linear(mFixedGainDb);
    }

    T gain() const { return mGain; }
    std::uint32_t lookAhead() const { return static_cast<std::uint32_t>(mRing.size()); }

    /// In place, any length. Allocates nothing.
    void process(complex<T> *buffer, unsigned int length)
    {
        if (mOn)
            follow(buffer, length);
        else
            applyFixedGain(buffer, length);
    }

private:
    static constexpr T kSmootherMs = 50;
    static constexpr T kLongestAttackMs = 5;
    static constexpr T kHighestGainDb = 120;
    static constexpr T kTarget = 1;
    static constexpr T kRampSeconds = T(0.01);
    static constexpr T kLookAheadPerMs = T(0.03); // 30 attack times, in samples per ms and Hz

    T pole(T ms) const { return std::exp(T(-1000) / (ms * mSampleRate)); }
    static T linear(T db) { return std::pow(T(10), db * T(0.05)); }

    // At least one sample, also at a rate that is no rate.
    std::size_t ringLength(T attackMs) const
    {
        const T samples = std::round(attackMs * mSampleRate * kLookAheadPerMs);
        return samples > T(1) ? static_cast<std::size_t>(samples) : 1;
    }

    // Attack changes arrive inside the sample path, where nothing may be allocated.
    void reserveRing()
    {
        mRing.reserve(ringLength(kLongestAttackMs));
        mMaxima.reserve(ringLength(kLongestAttackMs));
    }

    /// The newest samples stay. What is missing in front of them is silence, out of which they come
    /// in a straight ramp.
    void resizeRing(std::size_t size)
    {
        std::rotate(mRing.begin(), mRing.begin() + std::ptrdiff_t(mWrite), mRing.end());
        const auto kept = std::ptrdiff_t(std::min(size, mRing.size()));
        const auto missing = std::ptrdiff_t(size) - kept;
        if (missing > 0) {
            mRing.resize(size, complex<T>{0, 0});
            std::rotate(mRing.begin(), mRing.begin() + kept, mRing.end());
            const auto ramp = std::min(kept, std::ptrdiff_t(mSampleRate * kRampSeconds));
            for (std::ptrdiff_t n = 0; n < ramp; ++n) {
                complex<T> &x = mRing[std::size_t(missing + n)];
                x = {x.re * T(n) / T(ramp), x.im * T(n) / T(ramp)};
            }
        } else {
            mRing.erase(mRing.begin(), mRing.end() - kept);
        }
        mWrite = 0;
        mMaxima.reset(size);
        mMaxima.update(mRing.data(), size, 0, size);
    }

    void applyFixedGain(complex<T> *buffer, unsigned int length)
    {
        T smoother = mSmoother;
        for (unsigned int n = 0; n < length; ++n) {
            smoother = smoother * mSmootherComplement + mFixedGain * mSmootherCoefficient;
            buffer[n].re *= smoother;
            buffer[n].im *= smoother;
        }
        mSmoother = smoother;
    }

    // The ring's peak is taken once per block. A loud sample that leaves the ring in mid-block
    // keeps the gain down until the next block; loud ones coming in count from their own sample on.
    void follow(complex<T> *buffer, unsigned int length)
    {
        const T ringPeak = mMaxima.largest();
        const auto size = static_cast<std::uint32_t>(mRing.size());
        const auto hangLimit = static_cast<std::uint32_t>(mHangSeconds * mSampleRate + T(size));
        complex<T> *const ring = mRing.data();
        std::uint32_t write = mWrite;
        std::uint32_t hang = mHangCounter;
        T gain = mGain;
        for (unsigned int n = 0; n < length; ++n) {
            const complex<T> x = buffer[n];
            ring[write] = x;
            write = write + 1 < size ? write + 1 : 0;

            const T peak = std::max(std::max(ringPeak, std::abs(x.re)), std::abs(x.im));
            const T wanted = kTarget / peak; // infinite in silence; the maximum gain bounds it
            if (wanted != T(0)) {
                if (wanted > gain) {
                    if (hang++ > hangLimit)
                        gain = gain * mDecayComplement
                            + std::min(wanted, mMaximumGain) * mDecayCoefficient;
                } else if (wanted < gain) {
                    hang = 0;
                    gain = gain * mAttackComplement
                        + std::max(wanted, mMinimumGain) * mAttackCoefficient;
                }
            }
            gain = std::clamp(gain, mMinimumGain, mMaximumGain);
            buffer[n] = {gain * ring[write].re, gain * ring[write].im};
        }
        mMaxima.update(ring, size, mWrite, length);
        mGain = gain;
        mHangCounter = hang;
        mWrite = write;
    }

    bool mOn = true;
    bool mKeeps = false;
    T mSampleRate = 48000;
    T mAttackMs = 1;
    T mDecayMs = 400;
    T mMaximumGainDb = 120;
    T mMinimumGainDb = -20;
    T mFixedGainDb = 120;
    std::uint32_t mHangMs = 400;
    T mAttackCoefficient = 0;
    T mAttackComplement = 0;
    T mDecayCoefficient = 0;
    T mDecayComplement = 0;
    T mHangSeconds = 0;
    T mMinimumGain = T(0.1);
    T mMaximumGain = T(1e6);
    T mFixedGain = T(1e6);
    T mGain = 1;
    T mSmoother = 1;
    T mSmootherCoefficient = 0;
    T mSmootherComplement = 0;
    std::uint32_t mWrite = 0;
    std::uint32_t mHangCounter = 0;
    std::vector<complex<T>> mRing;
    DspCore::RunMaxima mMaxima; // of mRing
};
} // namespace Velmora::CppDsp
