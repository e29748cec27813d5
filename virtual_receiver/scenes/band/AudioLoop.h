// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AudioClip.h"

#include <cstdint>

namespace vr
{
/// Plays a clip as a station does: after a start time, over and over with pauses or once. Silence
/// in between is zeros.
class AudioLoop
{
public:
    AudioLoop(std::shared_ptr<const AudioClip> clip, double startSeconds, double pauseSeconds,
        bool repeat);

    void rewind();
    void read(double *out, std::size_t count);

private:
    std::shared_ptr<const AudioClip> m_clip;
    std::size_t m_startSamples;
    std::size_t m_pauseSamples;
    bool m_repeat;
    std::size_t m_silence = 0;  // samples of silence still to come
    std::size_t m_position = 0; // in the clip
};
} // namespace vr
