// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/PluginLoader.h"
#include "settings/HostSettings.h"
#include "stream/StreamLedger.h"

#include "services/HostAudioServer.h"
#include "services/HostBridge.h"
#include "services/HostIqServer.h"
#include "services/HostManager.h"
#include "services/HostSensors.h"
#include "settings/SettingsStore.h"

#include <QObject>
#include <QWidget>

#include <memory>
#include <optional>

namespace host
{
/// The receiver: the device plugin with the host's services around it.
///
/// A run goes load() - initialise() - open() - start() - stop() - close(), each once. All
/// operations belong to the main thread, which must run an event loop while the stream is on: the
/// device's timers and queued signals live on it. What pulls audio from the services on other
/// threads must have ended before close(). Failures give false; error() tells why in one line.
class PluginReceiver : public QObject
{
    Q_OBJECT

public:
    /// ledger must outlive the receiver.
    explicit PluginReceiver(StreamLedger &ledger);

    /// Closes.
    ~PluginReceiver() override;

    /// Loads the plugin and asks its capabilities whether it can do what the settings ask for.
    bool load(const HostSettings &settings);

    /// Lets the device build its engine and joins it to the services.
    bool initialise(const HostSettings &settings);

    /// Sets the device up and tunes it, then waits until one is found on the bus, up to some
    /// seconds, and opens it.
    bool open(const HostSettings &settings);

    /// Whether one is on the bus.
    bool isFound() const { return m_manager->isDeviceAvailable(); }

    /// Lets open() end soon with a failure. From within its event loop, or before.
    void giveUp() { m_isGivenUp = true; }

    /// Starts the stream and switches on what a start would undo. On a paced stream this is done
    /// before the first sample.
    bool start(const HostSettings &settings);

    /// Ends the stream. Whatever the device has queued for the main thread is dropped or done.
    void stop();

    /// The two halves of what open() does with stored settings, for who sets the device up by
    /// itself: opens the settings file (empty: the user's own), and hands what it holds, with the
    /// given options of the command line laid over it, to device and notches.
    SettingsStore &openStore(const QString &file);
    void readStored(const HostSettings &settings);

    /// After openStore().
    SettingsStore &store() { return *m_store; }

    /// Has the device write its settings and saves all that changed. False if that failed.
    bool saveSettings();

    /// The same on a thread of its own, see SettingsStore::saveLater().
    bool saveSettingsLater();

    /// Gives the device back, saves the settings and takes the plugin out. False if the settings
    /// could not be saved.
    bool close();

    /// See receiverDelayMs(). After saveSettings(), by which the device has told its options.
    std::optional<double> delayMs(const HostSettings &settings);

    DeviceAbstract &device() const { return *m_loader.device(); }
    HostBridge &bridge() const { return *m_bridge; }
    HostManager &manager() const { return *m_manager; }
    HostIqServer &iqServer() { return m_iqServer; }
    const HostSensors &meters() const { return m_sensors; }

    /// The device's options page. Whoever shows it takes it out of his window before it closes.
    QWidget &optionsPage() { return m_window; }

    /// Width of the panorama in hertz.
    double panoramaHz() const { return m_panoramaHz; }

    /// The plugin file that was taken.
    QString pluginFile() const { return m_loader.file(); }
    const QString &error() const { return m_error; }

    /// One line if the settings could not be read, which stops nothing; else empty.
    const QString &notice() const { return m_notice; }

signals:
    /// The stream ended by itself.
    void lost();

private:
    bool fail(const QString &text);
    bool checkPreamp(double db);
    bool checkReception(const HostSettings &settings);
    void join();
    void overlayStored(const HostSettings &settings);
    void setUp(const HostSettings &settings);
    void setUpNotches(const HostSettings &settings);
    void setUpRecording(const RecordingSettings &settings);
    bool findDevice();

    QString m_error;
    QString m_notice;
    bool m_isGivenUp = false;
    double m_panoramaHz = 0.0;
    StreamLedger &m_ledger;
    PluginLoader m_loader;
    std::optional<SettingsStore> m_store;

    // What the device is joined to; it ends before any of these.
    QWidget m_window; // holds the device's options
    HostIqServer m_iqServer;
    HostAudioServer m_audioServer;
    HostSensors m_sensors;
    std::unique_ptr<HostBridge> m_bridge;
    std::unique_ptr<HostManager> m_manager;
};
} // namespace host
