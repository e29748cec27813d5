// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AudioLoop.h"
#include "Modulator.h"

#include <vector>

namespace vr
{
/// Single side band by an analytic filter: a Kaiser low-pass moved up in frequency (the band-pass
/// form of the Hilbert method). It passes 100 to 5000 Hz of one sign and stops the other from 300
/// Hz on by more than 100 dB.
class SsbModulator : public Modulator
{
public:
    SsbModulator(AudioLoop audio, double activeRms, bool upper);

    void rewind() override;
    void make(Sample *out, std::size_t count) override;

private:
    AudioLoop m_audio;
    double m_scale;                 // to an RMS of 1 while speaking
    std::vector<double> m_filterRe; // reversed
    std::vector<double> m_filterIm;
    std::vector<double> m_history; // audio, oldest first
};
} // namespace vr
