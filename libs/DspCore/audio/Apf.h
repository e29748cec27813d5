// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/Biquad.h"
#include "DspCore/types.h"

namespace DspCore
{
/// Audio peak filter: lifts a narrow band out of the audio by lowering all the rest.
///
/// A peaking section whose output is scaled down by its gain. Not thread-safe; the owner
/// serialises.
class Apf
{
public:
    /// Starts at 500 Hz of 48 kHz, quality 1, 12 dB, switched off.
    Apf() { init(500.0 / 48000.0, 1.0, 12.0); }

    void setEnable(bool enable) { mPeak.setEnable(enable); }

    /// Zeroes the state only.
    void clear() { mPeak.clear(); }

    /// Centre in cycles per sample, quality (at least 0.1), gain in dB. Zeroes the state.
    void init(double frequency, double quality, double gainDb)
    {
        mPeak.init(Biquad::Type::Peak, frequency, quality, gainDb);
    }

    /// In place; passes through while switched off. Does nothing for a null buffer or a length
    /// below 1. Allocates nothing.
    void process(COMPLEX *buffer, int length)
    {
        if (buffer != nullptr && length > 0)
            mPeak.process(buffer, length);
    }

private:
    Biquad mPeak;
};
} // namespace DspCore
