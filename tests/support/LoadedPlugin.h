// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/HostBridge.h"
#include "services/HostIqServer.h"
#include "services/HostManager.h"
#include "services/HostSensors.h"
#include "stream/StreamLedger.h"
#include "support/TemporarySettings.h"

#include "host_interfaces/DeviceAbstract.h"

#include <QPluginLoader>

#include <functional>
#include <memory>

namespace test
{
/// The built plugin, loaded as a host loads it and not initialised yet, and the reference host's
/// services for it. GUI thread.
struct LoadedPlugin
{
    /// Throws std::runtime_error.
    LoadedPlugin();

    /// Deinitialises the device, if there is one, and takes the library out of the process.
    ~LoadedPlugin();

    /// Initialises the device within these services. A layout gets its options page.
    bool init(QLayout *page = nullptr, bool advanced = true);

    TemporarySettings folder;
    host::StreamLedger ledger;
    host::HostSensors sensors{ledger};
    host::HostIqServer iqServer{ledger};
    std::unique_ptr<host::HostBridge> bridge;
    std::unique_ptr<host::HostManager> manager;
    QPluginLoader loader{ZEPHRIN_PLUGIN_FILE};
    DeviceAbstract *device = nullptr;
};

/// Runs the event loop so long.
void runEvents(int ms);

/// Runs the event loop until it is true, looking every 5 ms. False if that took too long.
bool waitFor(const std::function<bool()> &condition, int ms);
} // namespace test
