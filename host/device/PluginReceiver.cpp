// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/PluginReceiver.h"

#include "device/ToolSetup.h"
#include "settings/DeviceRates.h"

#include "host_interfaces/DeviceAbstract.h"
#include "host_interfaces/DeviceFunctionsAbstract.h"
#include "host_interfaces/IqRecorder.h"
#include "host_interfaces/IqRecorderOption.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <QVBoxLayout>

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
    if (!checkPreamp(settings.preampDb))
        return false;
    if (!device().init(*m_bridge, m_window.layout(), false, true))
        return fail(device().name() + ": the device cannot work");
    setUpRecording(settings.recording);
    join(settings.spectrum);
    return true;
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

void PluginReceiver::join(const SpectrumSettings &spectrum)
{
    connect(&device(), &DeviceAbstract::devClosed, this, &PluginReceiver::lost);
    connect(&device(), &DeviceAbstract::changedSampleRate, this,
        [this](double widthHz) { m_panoramaHz = widthHz; });
    m_manager->hideSpectrumSlopes = spectrum.hideSlopes;
    device().setManager(m_manager.get());
    device().setIqServer(&m_iqServer);
    device().setAudioServer(&m_audioServer);
}

bool PluginReceiver::open(const HostSettings &settings)
{
    readSettings(settings);
    setUp(settings);
    setUpSpectrum(settings.spectrum);
    setUpNotches(settings);
    return findDevice();
}

void PluginReceiver::readSettings(const HostSettings &settings)
{
    if (settings.settingsFile.isEmpty())
        m_store.emplace();
    else
        m_store.emplace(settings.settingsFile);
    m_notice = m_store->error();
    m_store->overlay("ZephrinMOptions/SampleRate", deviceRateCode(settings.deviceRateHz));
    m_store->overlay("ZephrinMOptions/PreampAuto", settings.autoPreamp);
    ToolSetup::overlay(settings.tools, *m_store);
    device().readSettings(&m_store->settings());
    m_bridge->radioNotchControl()->readSettings(m_store->settings());
}

// Behind the settings: a new sample rate forgets the tuning.
void PluginReceiver::setUp(const HostSettings &settings)
{
    device().setDspMode(kReceiver, kChannelA, unsigned(settings.mode->modulation));
    device().setBandFilterIf(kReceiver, kChannelA, settings.filterLowHz, settings.filterHighHz);
    device().setRxFreq(kReceiver, settings.centerHz);
    device().setDownConverter(kReceiver, kChannelA, settings.tuneHz - settings.centerHz);
    ToolSetup(device(), *m_manager).prepare(settings.tools, settings.centerHz);
    m_manager->preamp().resend();
}

void PluginReceiver::setUpSpectrum(const SpectrumSettings &settings)
{
    if (settings.fftSize)
        device().setFftSize(unsigned(*settings.fftSize));
    if (settings.averagingType)
        device().setFftAveragingType(unsigned(*settings.averagingType));
    if (settings.averaging)
        device().setFftAveragingNum(unsigned(*settings.averaging));
    if (settings.intervalMs)
        device().setFftUpdateTime(unsigned(*settings.intervalMs));
    emit m_manager->waterfallFilterChanged(settings.waterfallFilter);
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
    for (clock.start(); !m_manager->isDeviceAvailable(); wait(kLookMs))
        if (clock.hasExpired(kSearchMs))
            return fail("no receiver found");
    wait(kLookMs);
    for (int i = 0; i < kTriesToOpen; wait(kTryMs), ++i)
        if (device().open())
            return true;
    return fail("the receiver cannot be opened");
}

bool PluginReceiver::start(const ToolSettings &tools)
{
    // A start reports true even if the device refused its stream.
    if (!device().start() || !device().isStart())
        return fail("the receiver does not start its stream");
    ToolSetup(device(), *m_manager).begin(tools);
    return true;
}

void PluginReceiver::stop()
{
    disconnect(&device(), nullptr, this, nullptr);
    device().stop();
}

void PluginReceiver::close()
{
    if (!m_loader.device())
        return;
    device().close();
    if (m_store) {
        device().writeSettings(&m_store->settings());
        if (!m_store->save())
            m_notice = m_store->error();
    }
    device().deinit();
    m_loader.deleteDevice();
    m_manager.reset();
    m_bridge.reset(); // with the pool, whose queue keeps the functions of its last jobs
    m_loader.unload();
}

bool PluginReceiver::fail(const QString &text)
{
    m_error = text;
    return false;
}
} // namespace host
