// SPDX-License-Identifier: GPL-3.0-or-later
#include "AmModulator.h"

namespace vr
{
AmModulator::AmModulator(AudioLoop audio, double depth) : m_audio(std::move(audio)), m_depth(depth)
{ }

void AmModulator::make(Sample *out, std::size_t count)
{
    m_block.resize(count);
    m_audio.read(m_block.data(), count);
    for (std::size_t i = 0; i < count; ++i)
        out[i] = 1.0 + m_depth * m_block[i];
}
} // namespace vr
