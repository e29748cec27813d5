// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/Biquad.h"
#include "DspCore/filters/DcBlock.h"
#include "DspCore/types.h"

#include <vector>

namespace DspCore
{
/// Narrow FM detector: a second-order phase-locked loop follows the signal, and the audio is the
/// loop frequency less its slow mean, so that a station off tune is heard without an offset.
///
/// The loop frequency is limited to +-1000 Hz. Both parts of every sample get the audio. Silent on
/// bad input. Not thread-safe; the owner serialises.
class DemodulatorNFM
{
public:
    DemodulatorNFM();

    /// Demodulates in place, length 1..SIGNAL_MAX_SIZE; does nothing for a null buffer or a length
    /// below 1. Allocates nothing.
    void process(COMPLEX *buffer, int length);

    /// Empties the history; the phase runs on.
    void clear();

    /// clear(), and the loop begins anew.
    void restart();

    /// Hertz. Restarts the loop.
    void setSampleRate(double rate);
    double sampleRate() const { return mSampleRate; }

    /// Peak deviation in hertz: sets the loop's bandwidth and the output scale. Restarts the loop.
    void setDeviation(double deviation);

private:
    void init();
    void follow(COMPLEX *audio, int length);

    double mSampleRate = 48000.0;
    double mDeviation = 6250.0;
    double mOutputScale = 0.0;
    double mPhase = 0.0;     // radians
    double mFrequency = 0.0; // radians per sample
    double mLowestFrequency = 0.0;
    double mHighestFrequency = 0.0;
    double mAlpha = 0.0;
    double mBeta = 0.0;
    double mDcEstimate = 0.0; // radians per sample
    double mDcCoefficient = 0.0;
    double mDcComplement = 0.0;
    std::vector<double> mAngles = std::vector<double>(SIGNAL_MAX_SIZE);
    DcBlock mDcBlock;
    Biquad mLowPass;
};
} // namespace DspCore
