// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"
#include "signal_primitives/ToneMixer.h"

namespace DspCore
{
/// Shifts the spectrum of a complex block by mixing it with a complex tone.
///
/// The tone runs on from block to block. A positive frequency shifts downward: a station at +f
/// lands on 0 Hz. The tone's frequency is the sum of oscillator and RIT, limited to half the sample
/// rate. Not thread-safe; the owner serialises setters and process().
class DownConverter
{
public:
    /// Cycles per sample (hertz / sample rate), limited to -0.5..0.5 after the sign is turned.
    void setOsc(double frequency);
    void setRit(double frequency);

    /// As stored: cycles per sample with the sign turned.
    double osc() const { return signedFrequency(mOsc); }
    double rit() const { return signedFrequency(mRit); }

    /// Mixes in place, length 1..SIGNAL_MAX_SIZE. A null buffer or a length below 1 is reported
    /// and left alone. Allocates nothing.
    void process(COMPLEX *buffer, int length) { process(buffer, buffer, length); }

    /// The same into another array.
    void process(const COMPLEX *buffer, COMPLEX *mixed, int length);

    /// Lets the tone run on over a block that nobody wants.
    void skip(int length);

    /// Restarts the tone at phase 0; the frequencies stay.
    void reset() { mPhase = 0.0; }

private:
    double toneFrequency() const;
    static double signedFrequency(double stored) { return stored > 0.5 ? stored - 1.0 : stored; }

    double mOsc = 0.0;   // cycles per sample, negated: the sign the tone generator wants
    double mRit = 0.0;   // likewise
    double mPhase = 0.0; // radians, carried from block to block
    signal_primitives::ToneMixer mMixer;
    IppStatus mStatus = ippStsNoErr;
};
} // namespace DspCore
