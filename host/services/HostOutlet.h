// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/AudioSource.h"

#include <atomic>

namespace host
{
/// An outlet beside the sound card, off until the host opens it at a rate of its choice. What it is
/// for the device is told by Interface: a VacAbstract or a LineOutAbstract.
///
/// Threads: open() and close() on the GUI thread, pull() on the audio thread.
template <typename Interface>
class HostOutlet : public Interface
{
public:
    using Interface::Interface;

    /// Raises opened(), after closed() if it was open at another rate. False for a rate of 0.
    bool open(quint64 sampleRateHz)
    {
        if (sampleRateHz == 0)
            return false;
        if (m_isOpen && m_sampleRateHz == sampleRateHz)
            return true;
        close();
        m_sampleRateHz = sampleRateHz;
        Q_EMIT this->opened(); // on which the device drops what it had for the last opening
        m_isOpen = true;
        return true;
    }

    /// Raises closed() if it was open.
    void close()
    {
        if (m_isOpen.exchange(false))
            Q_EMIT this->closed();
    }

    void setAudioCallback(AudioCallback callback) override
    {
        m_source.setCallback(std::move(callback));
    }

    /// See AudioSource::pull(); false also while closed.
    bool pull(std::vector<float> &in, std::vector<float> &out, unsigned long frames,
        unsigned long channels)
    {
        return m_isOpen && m_source.pull(in, out, frames, channels);
    }

protected:
    /// Hertz; valid while open.
    quint64 sampleRateHz() const { return m_sampleRateHz; }

private:
    AudioSource m_source;
    quint64 m_sampleRateHz = 0;
    std::atomic<bool> m_isOpen = false;
};
} // namespace host
