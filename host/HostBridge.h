// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "EngineTaps.h"

#include "host_interfaces/BridgeAbstract.h"

namespace host
{
/// The services that an engine without a plugin around it asks for: the pool for background jobs
/// and the sink for sound-card audio. The headless listener has none of the others, and nobody here
/// asks for them.
class HostBridge : public BridgeAbstract
{
    Q_OBJECT

public:
    explicit HostBridge(StreamLedger &ledger) : m_audioTap(ledger) { }

    tp::ThreadPool &threadPool() override { return m_pool; }
    BridgeAudioServerAbstract *audioServer() override { return &m_audioTap; }

    SoundOutAbstract *soundOut() override { return nullptr; }
    VacManagerAbstract *vacManager() override { return nullptr; }
    LineOutManagerAbstract *lineOutManager() override { return nullptr; }
    IQRecorderConfigure *iqRecorderConfigure() override { return nullptr; }
    RadioNotchFilterControlAbstract *radioNotchControl() override { return nullptr; }
    void reserved1() override { }
    void reserved2() override { }
    void reserved4() override { }
    void reserved8() override { }

private:
    tp::ThreadPool m_pool;
    AudioTap m_audioTap;
};
} // namespace host
