// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "EngineTaps.h"
#include "HostBridge.h"
#include "HostSettings.h"
#include "StreamLedger.h"
#include "ToolSetup.h"

#include "host_interfaces/AudioCallback.h"

#include <QString>
#include <memory>

class HardwareZephrinNANO;
class ZephrinMDSP;

namespace host
{
/// The receiver without a plugin around it: one driver and one engine, joined and tuned here.
///
/// All operations belong to the main thread, which must run an event loop while the stream is on
/// (the driver's watchdog lives on it); wakeEngine() and the callback of audio() may be used from
/// any thread between start() and stop().
class DirectReceiver
{
public:
    /// ledger must outlive the receiver.
    explicit DirectReceiver(StreamLedger &ledger);
    ~DirectReceiver();

    /// Finds and opens the first receiver on the bus, sets the engine up and tunes both. False if
    /// that failed; error() tells why in one line.
    bool open(const HostSettings &settings);
    /// Starts the stream and switches on what a start would undo. On a paced stream this is done
    /// before the first sample.
    bool start(const ToolSettings &tools);
    void stop();

    /// False also when the stream has ended by itself.
    bool isStreaming() const;

    AudioCallback audio();
    void wakeEngine();

    const HostSensors &meters() const { return m_sensors; }
    const QString &error() const { return m_error; }

private:
    bool fail(const QString &text);
    void setUpEngine(const HostSettings &settings);
    bool setUpDevice(const HostSettings &settings);

    int m_rateCode = 0;
    QString m_error;
    HostBridge m_bridge;
    IqTap m_iqTap;
    HostSensors m_sensors;
    std::shared_ptr<ZephrinMDSP> m_engine;
    ToolSetup m_tools;
    std::unique_ptr<HardwareZephrinNANO> m_driver; // ends before the engine that it feeds
};
} // namespace host
