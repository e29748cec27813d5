// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AudioLoop.h"
#include "Modulator.h"

#include <vector>

namespace vr
{
/// Amplitude modulation: a carrier of 1.0, varied by depth at the peak of the audio.
class AmModulator : public Modulator
{
public:
    AmModulator(AudioLoop audio, double depth);

    void rewind() override { m_audio.rewind(); }
    void make(Sample *out, std::size_t count) override;

private:
    AudioLoop m_audio;
    double m_depth;
    std::vector<double> m_block;
};
} // namespace vr
