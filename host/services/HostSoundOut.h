// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/AudioSource.h"

#include "host_interfaces/SoundOutAbstract.h"

namespace host
{
/// The sound-card output: whoever plays or keeps the audio pulls it here, on a thread of its own.
class HostSoundOut : public SoundOutAbstract
{
    Q_OBJECT

public:
    using SoundOutAbstract::SoundOutAbstract;

    void setAudioCallback(AudioCallback callback) override
    {
        m_source.setCallback(std::move(callback));
    }

    /// See AudioSource::pull(). Audio thread.
    bool pull(std::vector<float> &in, std::vector<float> &out, unsigned long frames,
        unsigned long channels)
    {
        return m_source.pull(in, out, frames, channels);
    }

    void reserved2() override { }
    void reserved3() override { }
    void reserved4() override { }
    void reserved5() override { }
    void reserved6() override { }
    void reserved7() override { }

private:
    AudioSource m_source;
};
} // namespace host
