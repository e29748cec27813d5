// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/HostBridge.h"
#include "services/HostIqServer.h"
#include "services/HostManager.h"
#include "services/HostSensors.h"
#include "stream/StreamLedger.h"
#include "support/TemporarySettings.h"

#include "host_interfaces/DeviceAbstract.h"

#include <QElapsedTimer>
#include <QPluginLoader>
#include <QWidget>

#include <functional>
#include <memory>

/// The loaded plugin, and a host that does with it what a listener does, whatever comes of it. Main
/// thread; every call into the plugin is timed.
class Session
{
public:
    Session();

    /// Takes the device's calls back, and the plugin out of the process.
    ~Session();

    /// Finds the receiver, starts it, tunes it, writes and reads its calibration, changes its rate,
    /// stops and closes it. True if a stream flowed.
    bool listen(int searchMs, int flowMs);

    /// The stream stopped by itself and the host was told.
    bool wasLost() const { return m_wasLost; }

    /// Longest time that one call into the plugin, or one event in between, held the main thread.
    qint64 longestMs() const { return m_longestMs; }

private:
    /// Times a call.
    template <typename Body>
    auto call(Body body);
    bool waitFor(const std::function<bool()> &condition, int ms);
    bool flows(int ms);
    bool flowsOrIsLost(int ms);
    void work();

    test::TemporarySettings m_settings;
    host::StreamLedger m_ledger;
    host::HostSensors m_sensors{m_ledger};
    host::HostIqServer m_iqServer{m_ledger};
    QWidget m_page;
    std::unique_ptr<host::HostBridge> m_bridge;
    std::unique_ptr<host::HostManager> m_manager;
    QPluginLoader m_loader;
    DeviceAbstract *m_device = nullptr;
    qint64 m_longestMs = 0;
    bool m_wasLost = false;
};
