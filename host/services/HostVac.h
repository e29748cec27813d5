// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/AudioSource.h"

#include "host_interfaces/VacAbstract.h"

#include <atomic>

namespace host
{
/// A virtual audio cable: off until the host opens it at a rate of its choice.
///
/// Threads: open() and close() on the GUI thread, pull() on the audio thread.
class HostVac : public VacAbstract
{
    Q_OBJECT

public:
    using VacAbstract::VacAbstract;

    /// Raises opened(), after closed() if it was open at another rate. False for a rate of 0.
    bool open(quint64 sampleRateHz);

    /// Raises closed() if it was open.
    void close();

    bool isOpen() const { return m_isOpen; }

    AudioParams audioParams() override { return {m_sampleRateHz}; }

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

    void reserved2() override { }
    void reserved3() override { }
    void reserved4() override { }

private:
    AudioSource m_source;
    quint64 m_sampleRateHz = 0;
    std::atomic<bool> m_isOpen = false;
};
} // namespace host
