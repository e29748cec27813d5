// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AudioLoop.h"
#include "Modulator.h"

#include <vector>

namespace vr
{
/// Frequency modulation of a carrier of 1.0, without pre-emphasis: the deviation belongs to the
/// peak of the audio.
class NfmModulator : public Modulator
{
public:
    NfmModulator(AudioLoop audio, double deviationHz);

    void rewind() override;
    void make(Sample *out, std::size_t count) override;

private:
    AudioLoop m_audio;
    double m_deviation;   // cycles per sample
    double m_phase = 0.0; // cycles
    std::vector<double> m_block;
};
} // namespace vr
