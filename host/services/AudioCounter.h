// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stream/StreamLedger.h"

#include "host_interfaces/BridgeAudioServerAbstract.h"

#include <algorithm>
#include <atomic>
#include <cmath>

namespace host
{
/// Where the engine pushes all sound-card audio: books into the ledger how much was made, and keeps
/// how loud it is. The audio itself is pulled at the sound output.
class AudioCounter : public BridgeAudioServerAbstract
{
    Q_OBJECT

public:
    /// ledger must outlive the counter.
    explicit AudioCounter(StreamLedger &ledger) : m_ledger(ledger) { }

    /// True while the device's stream is on. Any thread.
    bool isEnabled() const { return m_isEnabled; }

    /// The device switches on at a start of its stream, with its rings about to be emptied.
    void setEnabled(bool enabled) override
    {
        if (enabled)
            m_ledger.dropWaiting();
        m_isEnabled = enabled;
    }

    void write(int count, COMPLEX32 *audio) override
    {
        float peak = m_peak;
        for (int i = 0; audio && i < count; ++i)
            peak = std::max({peak, std::abs(audio[i].re), std::abs(audio[i].im)});
        m_peak = peak;
        m_ledger.addAudio(std::uint64_t(count));
    }

    /// Largest amplitude since the last call, full scale 1. One thread.
    float takePeak() { return m_peak.exchange(0.0f); }

private:
    StreamLedger &m_ledger;
    std::atomic<bool> m_isEnabled = false;
    std::atomic<float> m_peak = 0.0f;
};
} // namespace host
