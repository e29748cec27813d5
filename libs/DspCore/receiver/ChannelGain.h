// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/receiver/GainRamp.h"
#include "DspCore/types.h"

namespace DspCore
{
/// Volume, balance and mute of one channel while both channels are heard.
///
/// Three ramps in a row: volume on the stereo pair, then one on each side for the balance. They
/// move by 2 % of the remaining way per sample, whatever the rate.
class ChannelGain
{
public:
    /// dB; -60 is silence, above 0 counts as 0.
    void setVolume(double db);

    /// dB, 0 is the middle. Positive weakens the right side and ends at silence from 60 upward;
    /// negative weakens the left side and never quite silences it.
    void setBalance(double db);

    void setMute(bool mute) { mMute = mute; }

    void process(COMPLEX *buffer, int length);

private:
    static GainRamp ramp() { return GainRamp(0.98f, 0.02f, 1.0f); }

    GainRamp mVolume = ramp();
    GainRamp mLeft = ramp();  // real part
    GainRamp mRight = ramp(); // imaginary part
    bool mMute = false;
};

/// Linear gain 0..1 of a volume control: 10^(dB / 20), its lower end -60 dB being silence.
float volumeGain(double db);
} // namespace DspCore
