// SPDX-License-Identifier: GPL-3.0-or-later
#include "ZephrinMInterface.h"

#include "Control/AutoPreamp.h"
#include "host_interfaces/EngineLimits.h"
#include "host_interfaces/IQRecorderConfigure.h"
#include "host_interfaces/LineOutManagerAbstract.h"
#include "host_interfaces/RadioNotchFilterControlAbstract.h"
#include "host_interfaces/SoundOutAbstract.h"
#include "host_interfaces/VacManagerAbstract.h"
#include "signal_primitives/ipps.h"
#include "vm_library/source/log/Log.h"

#include <QCoreApplication>
#include <QLayout>
#include <QMessageBox>
#include <QMetaType>
#include <QScopedValueRollback>
#include <QTabWidget>
#include <QTimer>
#include <spdlog/spdlog.h>

#include <array>
#include <chrono>
#include <dlfcn.h>
#include <new>
#include <stdexcept>

namespace
{
constexpr auto SAMPLE_RATES = EngineLimits::kRatesHz; // hertz

// What of each device rate a panorama without the slopes of the input filter shows, hertz.
constexpr std::array<int, SAMPLE_RATES.size()> SAMPLE_RATES_SP = {
    43000, 86000, 172000, 344000, 688000, 1376000, 1720000, 2293333, 2752000};

constexpr double kDbPerAttenuatorStep = 0.5;
constexpr int kReceiver = 0;   // the only one
constexpr int kOutput = 0;     // the only virtual cable and line out that a device uses
constexpr int kExpertPage = 2; // of the options

// The host's tool bar is complete a moment after it has given the manager.
constexpr std::chrono::milliseconds kMenuDelay(500);

AudioCallback audioSource(std::shared_ptr<ZephrinMDSP> engine,
    bool (ZephrinMDSP::*io)(
        std::vector<float> &, std::vector<float> &, unsigned long, unsigned long))
{
    return [engine = std::move(engine), io](std::vector<float> &in, std::vector<float> &out,
               unsigned long frames,
               unsigned long channels) { return (engine.get()->*io)(in, out, frames, channels); };
}

// In which a host's pool that is not stuck gets to the jobs that still wait there.
constexpr std::chrono::seconds kPoolPatience{1};

/// Keeps this library in the process though the host unloads it.
void stayLoaded()
{
    Dl_info library;
    if (dladdr(reinterpret_cast<const void *>(&stayLoaded), &library) != 0)
        dlopen(library.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
}

/// Types that signals carry. A type registered by a library that is unloaded would leave Qt with
/// pointers into nowhere, and the same library loaded again could not mend it.
class SignalTypes
{
public:
    SignalTypes() : m_isOurs(!QMetaType::isRegistered(QMetaType::type("DspCore::AgcMode")))
    {
        m_agcMode = qRegisterMetaType<DspCore::AgcMode>("DspCore::AgcMode");
        qRegisterMetaType<DspCore::AgcMode>("AgcMode");
        qRegisterMetaType<double>("REAL");
    }
    ~SignalTypes()
    {
        if (m_isOurs)
            QMetaType::unregisterType(m_agcMode);
    }

private:
    bool m_isOurs; // not registered by the host before
    int m_agcMode;
};
} // namespace

ZephrinMInterface::ZephrinMInterface(QWidget *) : DeviceAbstract(nullptr)
{
    spdlog::set_pattern("[thread %t , time %H:%M:%S:%e] %v", spdlog::pattern_time_type::local);
    ippInit();
    static const SignalTypes types;
    m_functions = std::make_shared<ZephrinMFunctions>();
    m_functions->setCurrentPanSampleRateRX(SAMPLE_RATES_SP[0]);
    m_functions->setCurrentPanSampleRateTX(SAMPLE_RATES_SP[0]);
}

ZephrinMInterface::~ZephrinMInterface()
{
    deinit();
    if (!DspCore::PoolJobs::released(kPoolPatience))
        stayLoaded();
}

bool ZephrinMInterface::init(BridgeAbstract &bridge, QLayout *layout, bool, bool advanced)
{
    const QPointer<DeviceManagerAbstract> early = m_options ? nullptr : m_manager.data();
    deinit();
    const Repairs repairs = askedRepairs();
    m_bridge = &bridge;
    m_dsp = std::make_shared<ZephrinMDSP>(bridge.threadPool(), bridge, m_functions, nullptr);
    m_dsp->setRepairs(repairs);
    m_control.reset(q_check_ptr(new (std::nothrow) ControlM(m_dsp, nullptr)));
    m_control->setRepairs(repairs);
    m_options.reset(q_check_ptr(new (std::nothrow) ZephrinMOptions(nullptr)));
    followOptions();
    if (!advanced)
        hideExpertPage();
    if (layout)
        layout->addWidget(m_options.data());
    else
        m_options->show();
    connect(m_control.data(), &ControlM::openChanged, m_options.data(), &ZephrinMOptions::setLock);
    joinHostAudio();
    connect(m_dsp.get(), &ZephrinMDSP::spectrum, this, &DeviceAbstract::rxSpectrum);
    joinVirtualCable();
    joinParts();
    joinHostControls();
    emitAllSignals();
    m_dsp->setCwTone(m_options->cwPitch());
    if (early)
        setManager(early);
    return true;
}

Repairs ZephrinMInterface::askedRepairs() const
{
    QStringList unknown;
    const Repairs repairs = Repairs::named(property(Repairs::kProperty).toStringList(), unknown);
    if (!unknown.isEmpty())
        vm::log::warning(Q_FUNC_INFO, " there is no repair ", unknown.join(", "));
    return repairs;
}

/// A window of the host that goes before the plugin takes the page with it.
void ZephrinMInterface::followOptions()
{
    connect(m_options.data(), &QObject::destroyed, this, [this](const QObject *page) {
        if (page == m_options.data())
            m_options.take();
    });
}

/// The page's controls live on, so that its settings stay as they are.
void ZephrinMInterface::hideExpertPage()
{
    auto *const pages = m_options->findChild<QTabWidget *>("tbwOptions");
    pages->widget(kExpertPage)->close();
    pages->removeTab(kExpertPage);
}

void ZephrinMInterface::joinHostAudio()
{
    m_bridge->soundOut()->setAudioCallback(audioSource(m_dsp, &ZephrinMDSP::soundCardIO));
    m_bridge->vacManager()->vac(kOutput)->setAudioCallback(audioSource(m_dsp, &ZephrinMDSP::vacIO));
    m_bridge->lineOutManager()->lineOut(kOutput)->setAudioCallback(
        audioSource(m_dsp, &ZephrinMDSP::lineOutIO));
}

void ZephrinMInterface::leaveHostAudio()
{
    m_bridge->soundOut()->setAudioCallback({});
    m_bridge->vacManager()->vac(kOutput)->setAudioCallback({});
    m_bridge->lineOutManager()->lineOut(kOutput)->setAudioCallback({});
}

void ZephrinMInterface::joinVirtualCable()
{
    const auto vac = m_bridge->vacManager()->vac(kOutput);
    auto *const engine = m_dsp.get();
    m_cableOpened = connect(
        vac.get(), &VacAbstract::opened, vac.get(),
        [engine, cable = vac.get()] {
            engine->setVacSampleRate(double(cable->audioParams().sampleRate));
            engine->vacOpen();
        },
        Qt::DirectConnection);
    connect(vac.get(), &VacAbstract::closed, engine, &ZephrinMDSP::vacClose);
    const auto lineOut = m_bridge->lineOutManager()->lineOut(kOutput);
    connect(lineOut.get(), &LineOutAbstract::opened, engine, &ZephrinMDSP::lineoutOpen);
    connect(lineOut.get(), &LineOutAbstract::closed, engine, &ZephrinMDSP::lineoutClose);
}

void ZephrinMInterface::joinHostControls()
{
    auto *const options = m_options.data();
    auto *const control = m_control.data();
    connect(control, &ControlM::streamStopped, this, &ZephrinMInterface::endRecording);
    connect(control, &ControlM::openSerial, options, &ZephrinMOptions::setSerial);
    auto *const engine = m_dsp.get();
    connect(options, &ZephrinMOptions::cwPitchChanged, engine,
        [engine](int hz) { engine->setCwTone(hz); });
    auto *const notches = m_bridge->radioNotchControl();
    connect(notches, &RadioNotchFilterControlAbstract::paramChanged, engine,
        [this](std::size_t band, std::size_t id, bool enable, double hz, double width) {
            setNotch(band, id, enable, hz, width);
        });
    connect(notches, &RadioNotchFilterControlAbstract::enableFiltersChanged, engine,
        &ZephrinMDSP::onRnfEnabled);
}

void ZephrinMInterface::setManager(DeviceManagerAbstract *manager)
{
    assert(manager != nullptr);
    if (m_manager == manager)
        return;
    m_manager = manager;
    if (m_dsp && m_options)
        followManager();
}

void ZephrinMInterface::followManager()
{
    offerMenu();
    m_dsp->setSensors(m_manager->sensors);
    joinManager();
    // The slot acts on a change only; this way it acts at least once.
    const bool hide = m_manager->hideSpectrumSlopes;
    onHideSpectrumSlopes(!hide);
    onHideSpectrumSlopes(hide);
}

void ZephrinMInterface::offerMenu()
{
    // A timer of the page's own: QTimer::singleShot() would keep code of the plugin until it is
    // due, which may be after the plugin has been unloaded.
    auto *timer = new QTimer(m_options.data());
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    connect(
        timer, &QTimer::timeout, m_options.data(), [options = m_options.data(), host = m_manager] {
            if (host)
                host->setDeviceMenu(options->deviceMenu());
        });
    timer->start(kMenuDelay);
}

void ZephrinMInterface::deinit()
{
    if (m_dsp) {
        if (m_bridge)
            leaveHostAudio();
        disconnect(m_cableOpened);
        AutoPreamp::instance()->setAuto(false); // it outlives the page that switches it
    }
    if (m_manager) {
        // Another init() comes with a manager again, which may be this one.
        disconnect(m_manager, nullptr, this, nullptr);
        disconnect(AutoPreamp::instance(), nullptr, m_manager, nullptr);
        m_manager.clear();
    }
    if (!m_rateChange)
        delete m_leftPage;
    if (m_options)
        closeOptions();
    if (m_control) {
        m_control->close();
        m_control.reset();
    }
    if (m_dsp) {
        m_dsp->close();
        m_dsp.reset();
    }
}

void ZephrinMInterface::closeOptions()
{
    m_options->close();
    m_options->setParent(nullptr);
    if (!m_rateChange) {
        m_options.reset();
        return;
    }
    // Its own calls wait below on the stack for the end of the change; the page outlives them.
    m_leftPage = m_options.take();
    m_leftPage->disconnect();
    connect(m_rateChange, &QObject::destroyed, m_leftPage, &QObject::deleteLater);
}

bool ZephrinMInterface::open()
{
    return m_control && m_options && m_control->open(m_options->getCurrentDeviceID());
}

void ZephrinMInterface::close()
{
    if (m_control)
        m_control->close();
}

bool ZephrinMInterface::start()
{
    if (!open())
        return false;
    m_control->setBypass(m_options->bypass(), false);
    m_control->setPreamp(float(m_options->attValue() * kDbPerAttenuatorStep));
    m_control->start();
    m_options->onUpdate();
    sendNotchFilters();
    return true;
}

void ZephrinMInterface::sendNotchFilters()
{
    auto &control = *m_bridge->radioNotchControl();
    const std::size_t bands = control.bandCount();
    for (std::size_t band = 0; band < bands; ++band) {
        const std::size_t filters = control.filterCount();
        for (std::size_t id = 0; id < filters; ++id) {
            const auto filter = control.filter(band, id);
            setNotch(band, id, filter.enable, filter.freq, filter.width);
        }
    }
    for (std::size_t band = 0; band < bands; ++band)
        m_dsp->onRnfEnabled(band, control.bandEnabled(band));
}

void ZephrinMInterface::setNotch(
    std::size_t band, std::size_t id, bool enable, double hz, double width)
{
    try {
        m_dsp->onRnfParam(band, id, enable, hz, width);
    } catch (const std::out_of_range &) {
        vm::log::warning("radio notch filter ", id, " of band ", band,
            ": the receiver has no such filter, left out");
    }
}

void ZephrinMInterface::stop()
{
    if (open())
        m_control->stop();
}

void ZephrinMInterface::onStoped()
{
    if (m_control)
        m_control->stop();
    if (m_dsp)
        m_dsp->close();
}

bool ZephrinMInterface::isOpen()
{
    return m_control && m_control->isOpen();
}

bool ZephrinMInterface::isStart()
{
    return m_control && m_control->isStart();
}

bool ZephrinMInterface::isDeviceAvalible()
{
    return m_control && m_control->avalibleDevices();
}

SpectrumView ZephrinMInterface::receiverSpectrum(unsigned long id)
{
    if (m_dsp)
        m_dsp->readSpectrum(static_cast<unsigned int>(id), m_spectrum, m_waterfall);
    return {m_waterfall.size(), m_waterfall.data(), m_spectrum.data()};
}

CircularBuffer<COMPLEX> *ZephrinMInterface::getIqRingBuffer(unsigned int receiver)
{
    return m_dsp && receiver == kReceiver ? m_dsp->iqBuffer() : nullptr;
}

bool ZephrinMInterface::setRxFreq(int receiver, double freq)
{
    if (receiver != kReceiver || !m_dsp)
        return true;
    m_control->setFreq(freq);
    m_dsp->setDds(kReceiver, freq);
    m_dsp->iqRecorder()->setFrequency(freq);
    return true;
}

void ZephrinMInterface::writeIQ(bool state, int channel)
{
    if (channel != kReceiver)
        return;
    // The thread of the engine may have ended by itself; its handle tells nothing of that.
    if (!state || !isOpen() || m_dsp->stopping()) {
        engine(&ZephrinMDSP::iqRecorderStop);
        emit sWriteIQ(false, kReceiver);
        return;
    }
    if (m_dsp->isIqRecording())
        return;
    const auto &configuration = *m_bridge->iqRecorderConfigure();
    m_dsp->setIQFormat(configuration.format);
    const bool started = m_dsp->iqRecorderStart(configuration.fileName("ZephrinNANO"));
    emit sWriteIQ(started, kReceiver);
    if (!started)
        warnOfRecording();
}

/// The engine would go on with the file at the next start, at another rate under the old header.
void ZephrinMInterface::endRecording()
{
    if (!m_dsp || !m_dsp->isIqRecording())
        return;
    m_dsp->iqRecorderStop();
    emit sWriteIQ(false, kReceiver);
}

void ZephrinMInterface::warnOfRecording()
{
    QMessageBox::warning(m_manager ? m_manager->parentWidget() : nullptr,
        QCoreApplication::applicationName(), tr("Failed to open IQ file for write!"),
        QMessageBox::Ok, QMessageBox::NoButton);
}

void ZephrinMInterface::setMute(unsigned int receiver, int channel, bool state)
{
    if (channel < 0)
        engine(&ZephrinMDSP::setMainMute, state);
    else
        engine(&ZephrinMDSP::setMute, receiver, channel, state);
}

void ZephrinMInterface::setAgcGain(unsigned int receiver, unsigned int channel, int gain)
{
    if (receiver == kReceiver)
        engine(&ZephrinMDSP::setAgcGain, channel, gain);
}

void ZephrinMInterface::writeSettings(QSettings *settings)
{
    if (m_options)
        m_options->writeSettings(settings);
}

void ZephrinMInterface::readSettings(QSettings *settings)
{
    if (m_options) {
        const QScopedValueRollback reading(m_isReading, true);
        m_options->readSettings(settings);
    }
    emitAllSignals();
}

void ZephrinMInterface::emitAllSignals()
{
    if (m_options)
        onSampleRate(m_options->sampleRateIndex());
}

/// The order matters: a running stream restarts inside the control's part. A rate that comes while
/// the page reads its settings is applied once, at the end.
void ZephrinMInterface::onSampleRate(int index)
{
    if (m_isReading || std::size_t(index) >= SAMPLE_RATES.size() || !m_control)
        return;
    const int rate = SAMPLE_RATES[std::size_t(index)];
    const int pan = m_hideSlopes ? SAMPLE_RATES_SP[std::size_t(index)] : rate;
    m_functions->setCurrentSampleRateRX(rate);
    m_functions->setCurrentSampleRateTX(rate);
    m_functions->setCurrentPanSampleRateRX(pan);
    m_functions->setCurrentPanSampleRateTX(pan);
    QObject change;
    if (!m_rateChange)
        m_rateChange = &change;
    const QPointer<ControlM> control = m_control.data();
    m_control->setSampleRate(rate);
    // A restart serves events: the device may be taken down by now, or a later rate may have
    // overtaken this one.
    if (!control || m_functions->getCurrentSampleRateRX() != rate)
        return;
    m_dsp->setSampleRate(rate);
    emit changedSampleRate(m_functions->getCurrentPanSampleRateRX());
}

void ZephrinMInterface::onHideSpectrumSlopes(bool enable)
{
    if (m_hideSlopes == enable || !m_dsp)
        return;
    m_hideSlopes = enable;
    m_dsp->setHideSpectrumSlopes(enable);
    emitAllSignals();
}

void ZephrinMInterface::on4k(bool state)
{
    if (m_options)
        m_options->on4k(state);
}

void ZephrinMInterface::updateGuiControls()
{
    on4k(false);
}
