// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stream/StreamLedger.h"

#include "host_interfaces/BridgeAudioServerAbstract.h"

#include <atomic>

namespace host
{
/// Where the engine pushes all sound-card audio: books into the ledger how much was made. The audio
/// itself is pulled at the sound output.
class AudioCounter : public BridgeAudioServerAbstract
{
    Q_OBJECT

public:
    /// ledger must outlive the counter.
    explicit AudioCounter(StreamLedger &ledger) : m_ledger(ledger) { }

    /// True while the device's stream is on. Any thread.
    bool isEnabled() const { return m_isEnabled; }

    void setEnabled(bool enabled) override { m_isEnabled = enabled; }
    void write(int count, COMPLEX32 *) override { m_ledger.addAudio(std::uint64_t(count)); }

private:
    StreamLedger &m_ledger;
    std::atomic<bool> m_isEnabled = false;
};
} // namespace host
