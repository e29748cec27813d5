// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/LoadedPlugin.h"

#include "host_interfaces/CreditPump.h"
#include "host_interfaces/DeviceFunctionsAbstract.h"
#include "virtual_receiver/virtual_receiver.h"

#include <QVariantMap>

#include <functional>
#include <vector>

namespace test
{
/// The loaded plugin with the virtual receiver below and a listener's hands above. GUI thread;
/// waiting runs the event loop.
class PluginRig
{
public:
    static constexpr int kAudioRateHz = 48000;

    /// Loads the plugin. Begins with an attached receiver and no settings.
    PluginRig();

    void init(bool advanced = true);

    /// init() with settings, whose keys are those of the device's own group, and a scan that has
    /// found the receiver.
    void prepare(const QVariantMap &settings = {});

    /// prepare() and a running stream.
    void start(const QVariantMap &settings = {});

    /// The services go while the device is still there.
    void loseHost();

    /// Really takes the library out of the process. True if it is gone.
    bool unload();

    DeviceAbstract &device() { return *m_plugin.device; }
    host::HostBridge &bridge() { return *m_plugin.bridge; }
    host::HostManager &manager() { return *m_plugin.manager; }
    host::HostIqServer &iqServer() { return m_plugin.iqServer; }
    host::StreamLedger &ledger() { return m_plugin.ledger; }

    void readSettings(const QVariantMap &values = {});

    /// Waits for a scan to find the receiver.
    bool waitForReceiver();

    struct Carrier
    {
        double hz;
        double levelDb;
    };
    /// What the receiver hears around 7.1 MHz; it sends what listen() grants it.
    static void chooseCarriers(const std::vector<Carrier> &carriers);

    /// False if it did not become true in time.
    static bool waitFor(const std::function<bool()> &condition, int ms)
    {
        return test::waitFor(condition, ms);
    }
    static void wait(int ms) { runEvents(ms); }

    /// Tunes to a frequency with 0 Hz of audio there.
    void tune(double centreHz, double stationHz);

    /// Pulls audio; the left side. The receiver sends what is granted here, so that nothing is lost
    /// on a busy machine.
    std::vector<COMPLEX> listen(double seconds);

    /// Of a component of the audio, in decibels.
    static double level(const std::vector<COMPLEX> &audio, double hz);

    vr_status receiver() const;

private:
    CreditPump makePump() const;
    void waitForAudio(std::uint64_t frames, CreditPump &pump, std::uint64_t start);

    LoadedPlugin m_plugin;
};

/// Threads of this process.
int threadCount();

/// What this process has allocated and not freed, in KiB, over all of the C library's arenas. The
/// resident memory will not do: it also holds what the allocator keeps for the threads to come,
/// some MiB more or less from run to run.
long allocatedKiB();
} // namespace test
