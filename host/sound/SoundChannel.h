// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "sound/AudioPump.h"
#include "sound/SoundOutput.h"

#include <QString>

namespace host
{
/// One way out for audio: what fetches it, and the sound card that may play it. Further sinks, a
/// recording for example, join at pump(). GUI thread.
class SoundChannel
{
public:
    /// The source must outlive the channel.
    explicit SoundChannel(FrameSource &source) : m_pump(source) { m_pump.add(m_output.stream()); }
    ~SoundChannel() { m_pump.remove(m_output.stream()); }

    AudioPump &pump() { return m_pump; }
    SoundOutput &output() { return m_output; }

private:
    SoundOutput m_output;
    AudioPump m_pump; // ends first: it pushes into the output
};
} // namespace host
