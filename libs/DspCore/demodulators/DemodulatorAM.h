// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/Biquad.h"
#include "DspCore/filters/DcBlock.h"
#include "DspCore/types.h"

#include <vector>

namespace DspCore
{
/// Envelope detector: magnitude, then removal of the carrier's direct current.
///
/// Both parts of every sample get the audio. Not thread-safe; the owner serialises.
class DemodulatorAM
{
public:
    DemodulatorAM();

    /// Demodulates in place, length 1..SIGNAL_MAX_SIZE. A null buffer or a length below 1 is
    /// reported and left alone. Allocates nothing.
    void process(COMPLEX *buffer, int length);

    /// Empties the history; the settings stay.
    void clear();

    /// Hertz.
    void setSampleRate(double rate);
    double sampleRate() const { return mSampleRate; }

    /// Cut-off of the audio low-pass in hertz. The low-pass is designed and kept, but it is never
    /// switched on: the band filter in front alone sets the audio bandwidth.
    void setFilterFc(double cutoff);
    double filterFc() const { return mFilterFc; }

private:
    void designFilter();

    double mSampleRate = 48000.0;
    double mFilterFc = 6000.0;
    std::vector<double> mMagnitude = std::vector<double>(SIGNAL_MAX_SIZE);
    DcBlock mDcBlock;
    Biquad mLowPass;
};
} // namespace DspCore
