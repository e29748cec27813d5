// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/PluginReceiver.h"

#include "device/ReceiverDelay.h"
#include "settings/DeviceRates.h"
#include "settings/OptionTable.h"

#include "host_interfaces/DeviceAbstract.h"
#include "host_interfaces/DeviceFunctionsAbstract.h"
#include "host_interfaces/IqRecorder.h"
#include "host_interfaces/IqRecorderOption.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace host
{
namespace
{
// The device has one receiver with two channels.
constexpr unsigned kReceiver = 0;
constexpr unsigned kChannelA = 0;

// The device looks at the bus when it is made and every two seconds.
constexpr int kSearchMs = 3000;
constexpr int kLookMs = 10;
// A device that was found is in the device's list after a queued signal.
constexpr int kTriesToOpen = 5;
constexpr int kTryMs = 100;

/// Serves the event loop for so long.
void wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}
} // namespace

PluginReceiver::PluginReceiver(StreamLedger &ledger)
    : m_ledger(ledger), m_iqServer(ledger), m_sensors(ledger)
{
    new QVBoxLayout(&m_window);
}

PluginReceiver::~PluginReceiver()
{
    close();
}

bool PluginReceiver::load(const HostSettings &settings)
{
    if (!m_loader.load(settings.pluginFile))
        return fail(m_loader.error());
    DeviceFunctionsAbstract &functions = *device().getAvalibleFunctions();
    m_bridge = std::make_unique<HostBridge>(m_ledger, HostNotchControl::bandNames(functions));
    m_manager =
        std::make_unique<HostManager>(&m_sensors, PreampControl::limitsOf(functions), &m_window);
    return checkPreamp(settings.preampDb) && checkReception(settings);
}

bool PluginReceiver::checkPreamp(double db)
{
    m_manager->preamp().setDb(float(db));
    if (double(m_manager->preamp().db()) == db)
        return true;
    DeviceFunctionsAbstract &functions = *device().getAvalibleFunctions();
    return fail(QString("--preamp: %1 is not in %2 to %3 in steps of %4")
                    .arg(db)
                    .arg(functions.minimumPreamp())
                    .arg(functions.maximumPreamp())
                    .arg(functions.stepPreamp()));
}

bool PluginReceiver::checkReception(const HostSettings &settings)
{
    DeviceFunctionsAbstract &functions = *device().getAvalibleFunctions();
    const ReceptionMode &mode = *settings.mode;
    const auto modes = functions.listModes();
    const auto isAsked = [&mode](const auto &item) { return item.mode == mode.mode; };
    if (std::none_of(modes.begin(), modes.end(), isAsked))
        return fail(QString("--mode: %1 has no %2").arg(device().name(), mode.name));
    const auto [lowest, highest] = functions.filterLimits(mode.mode);
    if (settings.filterLowHz >= lowest && settings.filterHighHz <= highest)
        return true;
    return fail(QString("--filter: %1:%2 is not within %3:%4, the limits of %5")
                    .arg(settings.filterLowHz)
                    .arg(settings.filterHighHz)
                    .arg(lowest)
                    .arg(highest)
                    .arg(mode.name));
}

bool PluginReceiver::initialise(const HostSettings &settings)
{
    if (!settings.repairs.isEmpty())
        device().setProperty(Repairs::kProperty, settings.repairs);
    if (!device().init(*m_bridge, m_window.layout(), false, true))
        return fail(device().name() + ": the device cannot work");
    setUpRecording(settings.recording);
    join();
    return true;
}

void PluginReceiver::setUpRecording(const RecordingSettings &settings)
{
    if (!settings.isOn())
        return; // the recorder's page would make a folder in the user's home
    IqRecorder &recorder = *IqRecorder::instance();
    recorder.setPath(settings.folder);
    recorder.options()->setFormat(*settings.format);
    m_bridge->followRecorder(recorder);
    device().setIqRecorder(&recorder);
}

void PluginReceiver::join()
{
    connect(&device(), &DeviceAbstract::devClosed, this, &PluginReceiver::lost);
    connect(&device(), &DeviceAbstract::changedSampleRate, this,
        [this](double widthHz) { m_panoramaHz = widthHz; });
    device().setManager(m_manager.get());
    device().setIqServer(&m_iqServer);
    device().setAudioServer(&m_audioServer);
}

bool PluginReceiver::open(const HostSettings &settings)
{
    openStore(settings.settingsFile);
    m_store->overlay("ZephrinMOptions/SampleRate", deviceRateCode(settings.deviceRateHz));
    m_store->overlay("ZephrinMOptions/PreampAuto", settings.autoPreamp);
    readStored(settings);
    setUp(settings);
    setUpNotches(settings);
    return findDevice();
}

SettingsStore &PluginReceiver::openStore(const QString &file)
{
    if (file.isEmpty())
        m_store.emplace();
    else
        m_store.emplace(file);
    m_notice = m_store->error();
    return *m_store;
}

void PluginReceiver::readStored(const HostSettings &settings)
{
    overlayStored(settings);
    device().readSettings(&m_store->settings());
    m_bridge->radioNotchControl()->readSettings(m_store->settings());
}

/// Options whose values the device stores hold for this run only.
void PluginReceiver::overlayStored(const HostSettings &settings)
{
    for (const Option &option : optionTable()) {
        const QVariant value = settings.given[option.name];
        if (!option.stored || !value.isValid())
            continue;
        QString key = option.stored;
        if (option.storedBy)
            key = key.arg(settings.valueOf(option.storedBy).toString());
        m_store->overlay("ZephrinMOptions/" + key, value);
    }
    // The files' de-emphasis takes the place of the one that it knows.
    if (settings.deemphasisUs)
        m_store->overlay("ZephrinMOptions/dsp_wfm_usa", false);
}

void PluginReceiver::setUp(const HostSettings &settings)
{
    device().setDspMode(kReceiver, kChannelA, unsigned(settings.mode->mode));
    device().setBandFilterIf(kReceiver, kChannelA, settings.filterLowHz, settings.filterHighHz);
    device().setRxFreq(kReceiver, settings.centerHz);
    device().setDownConverter(kReceiver, kChannelA, settings.tuneHz - settings.centerHz);
    for (const Option &option : optionTable())
        if (const QVariant value = settings.given[option.name]; option.setUp && value.isValid())
            option.setUp({device(), *m_manager, settings}, value);
    m_manager->preamp().resend();
}

// The device takes all filters of the table when it starts.
void PluginReceiver::setUpNotches(const HostSettings &settings)
{
    if (settings.notches.isEmpty())
        return;
    HostNotchControl &control = *m_bridge->radioNotchControl();
    const auto band =
        std::size_t(device().getAvalibleFunctions()->getBandFromFreq(settings.tuneHz));
    for (std::size_t id = 0; id < NotchLimits::kFilters; ++id) {
        if (id < std::size_t(settings.notches.size())) {
            const NotchSettings &notch = settings.notches[int(id)];
            control.setFilter(band, id, {notch.widthHz, notch.frequencyHz, true});
        } else {
            control.setFilter(band, id, HostNotchControl::kUnused);
        }
    }
    control.setBandEnabled(band, true);
}

bool PluginReceiver::findDevice()
{
    QElapsedTimer clock;
    for (clock.start(); !m_isGivenUp && !m_manager->isDeviceAvailable(); wait(kLookMs))
        if (clock.hasExpired(kSearchMs))
            return fail("no receiver found");
    wait(kLookMs);
    for (int i = 0; !m_isGivenUp && i < kTriesToOpen; wait(kTryMs), ++i)
        if (device().open())
            return true;
    return fail(
        m_isGivenUp ? "interrupted before the receiver was open" : "the receiver cannot be opened");
}

bool PluginReceiver::start(const HostSettings &settings)
{
    // A start reports true even if the device refused its stream.
    if (!device().start() || !device().isStart())
        return fail("the receiver does not start its stream");
    for (const Option &option : optionTable())
        if (const QVariant value = settings.valueOf(option.name); option.begin && value.isValid())
            option.begin({device(), *m_manager, settings}, value);
    return true;
}

void PluginReceiver::stop()
{
    disconnect(&device(), nullptr, this, nullptr);
    device().stop();
}

bool PluginReceiver::saveSettings()
{
    if (!m_store)
        return true;
    device().writeSettings(&m_store->settings());
    return m_store->save() || fail(m_store->error());
}

bool PluginReceiver::saveSettingsLater()
{
    if (!m_store)
        return true;
    device().writeSettings(&m_store->settings());
    return m_store->saveLater() || fail(m_store->error());
}

bool PluginReceiver::close()
{
    if (!m_loader.device())
        return true;
    device().close();
    const bool isSaved = saveSettings();
    device().deinit();
    m_loader.deleteDevice();
    m_manager.reset();
    m_bridge.reset(); // with the pool, whose queue keeps the functions of its last jobs
    m_loader.unload();
    return isSaved;
}

std::optional<double> PluginReceiver::delayMs(const HostSettings &settings)
{
    return m_store ? receiverDelayMs(settings, m_store->settings()) : std::nullopt;
}

bool PluginReceiver::fail(const QString &text)
{
    m_error = text;
    return false;
}
} // namespace host
