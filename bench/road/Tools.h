// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

class ZephrinMDSP;

namespace bench
{
/// Switches on all that a listener could switch on at once: blankers, eight IQ notches, noise
/// reduction, notch, peak filters, equalizer, squelches, tone squelch, the two other outlets. Of
/// binaural sound and the CW spread, which exclude each other, it takes the dearer one of the mode.
/// The device is tuned to centreHz and sends at rateHz.
void switchToolsOn(ZephrinMDSP &engine, DspCore::Modulation mode, double centreHz, double rateHz);

/// All 18 bands of the equalizer, each at a gain that changes the sound.
void switchEqualizerOn(ZephrinMDSP &engine);
} // namespace bench
