// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/DownConverter.h"
#include "DspCore/types.h"

namespace DspCore
{
/// Makes a keyed carrier audible: the CW filter is centred on 0 Hz, and the signal is moved up by
/// the tone frequency, so that a station in tune is heard at the tone.
///
/// The output stays complex. Not thread-safe; the owner serialises.
class DemodulatorCW
{
public:
    DemodulatorCW();

    /// Mixes in place, length 1..SIGNAL_MAX_SIZE. A null buffer or a length below 1 is reported and
    /// left alone. Allocates nothing.
    void process(COMPLEX *buffer, int length);

    /// Hertz.
    void setSampleRate(double rate);
    double sampleRate() const { return mSampleRate; }

    /// Tone of a station in tune, hertz.
    void setFrequency(double tone);
    double frequency() const { return mFrequency; }

private:
    void tune();

    double mSampleRate = 48000.0;
    double mFrequency = 700.0;
    DownConverter mMixer;
};
} // namespace DspCore
