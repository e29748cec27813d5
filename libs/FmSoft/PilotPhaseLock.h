// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FmSoft/FilterFM.h"
#include "FmSoft/SteadyPhasor.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Phase-locked loop on the stereo pilot.
///
/// The signal is mixed with the loop's sine and cosine; both products run through a two-pole
/// filter, and their ratio, small-angle for the phase error, drives a proportional-integral loop:
///
///     x ─┬─ sin ─ low-pass ─ I ─┐
///        └─ cos ─ low-pass ─ Q ─┴─ Q / I ─ loop filter ─> frequency ─> phase
///
/// Lock is judged once per block. Frequencies are in cycles per sample. Not thread-safe.
class PilotPhaseLock
{
public:
    /// A whole number of seconds of pilot, counted in periods.
    struct PpsEvent
    {
        std::uint64_t ppsIndex;    ///< events since the lock
        std::uint64_t sampleIndex; ///< from the first sample ever
        double blockPosition;      ///< fraction of the block
    };

    PilotPhaseLock(double frequency, double bandwidth, double minimumSignal);

    /// Writes the pilot's second harmonic, locked to it in phase, amplitude 1; out takes the length
    /// of in.
    void process(const SampleVector &in, SampleVector &out);

    /// Begins anew, unlocked.
    void restart();

    /// Whether the pilot has been there for 20 / bandwidth samples.
    bool locked() const { return mLockCount >= mLockDelay; }

    /// Twice the smallest in-phase amplitude of the last block.
    double pilotLevel() const { return 2.0 * mPilotLevel; }

    /// Events of the last block.
    const std::vector<PpsEvent> &ppsEvents() const { return mPpsEvents; }

private:
    void follow(const double *in, double *out, std::size_t length);
    void countSecond(std::size_t position, std::size_t length);
    void judgeLock(std::size_t length);

    const double mNominalFrequency; // radians per sample
    double mMinimumFrequency;
    double mMaximumFrequency;
    FmSoft::SteadyPhasor mPhasor; // of mPhase
    std::size_t mPhasorSteps;     // that it takes without a new start
    double mPhasorB0;
    double mPhasorA1;
    double mPhasorA2;
    double mI1 = 0.0;
    double mI2 = 0.0;
    double mQ1 = 0.0;
    double mQ2 = 0.0;
    double mLoopB0;
    double mLoopB1;
    double mLastError = 0.0;
    double mFrequency;   // radians per sample
    double mPhase = 0.0; // radians
    double mMinimumSignal;
    double mPilotLevel = 0.0;
    std::int32_t mLockDelay;     // samples
    std::int32_t mLockCount = 0; // samples
    std::int32_t mPilotPeriods = 0;
    std::uint64_t mPpsIndex = 0;
    std::uint64_t mSampleCount = 0;
    std::vector<PpsEvent> mPpsEvents;
};
