// SPDX-License-Identifier: GPL-3.0-or-later
#include "NfmModulator.h"

#include <cmath>
#include <numbers>

namespace vr
{
NfmModulator::NfmModulator(AudioLoop audio, double deviationHz)
    : m_audio(std::move(audio)), m_deviation(deviationHz / kAudioRateHz)
{ }

void NfmModulator::rewind()
{
    m_audio.rewind();
    m_phase = 0.0;
}

void NfmModulator::make(Sample *out, std::size_t count)
{
    m_block.resize(count);
    m_audio.read(m_block.data(), count);
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = std::polar(1.0, 2.0 * std::numbers::pi * m_phase);
        m_phase += m_deviation * m_block[i];
        m_phase -= std::floor(m_phase);
    }
}
} // namespace vr
