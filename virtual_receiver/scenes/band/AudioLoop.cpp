// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioLoop.h"

#include <algorithm>
#include <limits>

namespace vr
{
AudioLoop::AudioLoop(
    std::shared_ptr<const AudioClip> clip, double startSeconds, double pauseSeconds, bool repeat)
    : m_clip(std::move(clip)), m_startSamples(std::size_t(startSeconds * kAudioRateHz)),
      m_pauseSamples(std::size_t(pauseSeconds * kAudioRateHz)), m_repeat(repeat)
{
    rewind();
}

void AudioLoop::rewind()
{
    m_silence = m_startSamples;
    m_position = 0;
}

void AudioLoop::read(double *out, std::size_t count)
{
    while (count > 0) {
        std::size_t part = std::min(count, m_silence);
        std::fill_n(out, part, 0.0);
        m_silence -= part;
        out += part;
        count -= part;

        part = std::min(count, m_clip->samples.size() - m_position);
        std::copy_n(m_clip->samples.begin() + std::ptrdiff_t(m_position), part, out);
        m_position += part;
        out += part;
        count -= part;
        if (m_position == m_clip->samples.size()) {
            m_position = 0;
            m_silence = m_repeat ? m_pauseSamples : std::numeric_limits<std::size_t>::max();
        }
    }
}
} // namespace vr
