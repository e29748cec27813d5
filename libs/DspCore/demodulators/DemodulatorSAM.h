// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/Biquad.h"
#include "DspCore/filters/DcBlock.h"
#include "DspCore/types.h"

namespace DspCore
{
/// Synchronous AM detector: a second-order phase-locked loop turns the carrier onto one axis and
/// the audio is the component along it.
///
/// The error is taken from the rotated sample itself with its sign as it comes, so the loop rests
/// half a turn away from the carrier and the audio is inverted; the ear does not tell. Loop
/// bandwidth about 30 Hz at 48 kHz (F. M. Gardner, "Phaselock Techniques", damping 1); it is in
/// cycles per sample and does not follow the sample rate. Both parts of every sample get the audio.
/// Not thread-safe; the owner serialises.
class DemodulatorSAM
{
public:
    DemodulatorSAM();

    /// Demodulates in place, length 1..SIGNAL_MAX_SIZE. A null buffer or a length below 1 is
    /// reported and left alone. Allocates nothing.
    void process(COMPLEX *buffer, int length);

    /// Empties the filters' history. Phase and loop frequency run on, so that a clear in a fade
    /// does not lose the carrier.
    void clear();

    /// clear(), and the loop begins anew.
    void restart();

    /// Hertz.
    void setSampleRate(double rate);
    double sampleRate() const { return mSampleRate; }

    /// Cut-off of the audio low-pass in hertz; the low-pass is designed but never switched on, as
    /// in DemodulatorAM.
    void setFilterFc(double cutoff);
    double filterFc() const { return mFilterFc; }

private:
    void designFilter();

    double mSampleRate = 48000.0;
    double mFilterFc = 6000.0;
    double mPhase = 0.0;     // radians
    double mFrequency = 0.0; // radians per sample
    DcBlock mDcBlock;
    Biquad mLowPass;
};
} // namespace DspCore
