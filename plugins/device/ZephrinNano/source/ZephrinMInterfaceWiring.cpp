// SPDX-License-Identifier: GPL-3.0-or-later
#include "CheckedConnect.h"
#include "Control/AutoPreamp.h"
#include "Control/CalibrationControl.h"
#include "ZephrinMInterface.h"
#include "host_interfaces/LineOutManagerAbstract.h"
#include "host_interfaces/RadioNotchFilterControlAbstract.h"
#include "host_interfaces/SoundOutAbstract.h"
#include "host_interfaces/VacManagerAbstract.h"

#include <QLayout>
#include <QTabWidget>
#include <QTimer>

#include <chrono>
#include <new>

namespace
{
using namespace std::chrono_literals;

constexpr int kOutput = 0;     // the only virtual cable and line out that a device uses
constexpr int kExpertPage = 2; // of the options

// The host's tool bar is complete a moment after it has given the manager.
constexpr auto kMenuDelay = 500ms;

/// One end of a checked connection to the other.
struct Joint
{
    const QObject *source;
    const char *signal;
    const QObject *target;
    const char *method;
};

AudioCallback audioSource(std::shared_ptr<ZephrinMDSP> engine,
    bool (ZephrinMDSP::*io)(
        std::vector<float> &, std::vector<float> &, unsigned long, unsigned long))
{
    return [engine = std::move(engine), io](std::vector<float> &in, std::vector<float> &out,
               unsigned long frames,
               unsigned long channels) { return (engine.get()->*io)(in, out, frames, channels); };
}
} // namespace

bool ZephrinMInterface::init(BridgeAbstract &bridge, QLayout *layout, bool, bool advanced)
{
    const QPointer<DeviceManagerAbstract> early = m_options ? nullptr : m_manager.data();
    deinit();
    m_bridge = &bridge;
    m_dsp = std::make_shared<ZephrinMDSP>(bridge.threadPool(), bridge, m_functions, nullptr);
    m_control.reset(q_check_ptr(new (std::nothrow) ControlM(m_dsp, nullptr)));
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
    emitAllSignals();
    m_dsp->setCwTone(m_options->cwPitch());
    if (early)
        setManager(early);
    return true;
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

void ZephrinMInterface::joinParts()
{
    auto *const options = m_options.data();
    auto *const control = m_control.data();
    const auto calibration = control->calibration();

    for (const auto &[source, signal, target, method] : {
             Joint{control, SIGNAL(statusChanged(QString)), options, SLOT(setStatus(QString))},
             Joint{control, SIGNAL(stoped()), this, SIGNAL(devClosed())},
             Joint{control, SIGNAL(stoped()), this, SLOT(onStoped())},
             Joint{options, SIGNAL(sampleRateChanged(int)), this, SLOT(onSampleRate(int))},
             Joint{options, SIGNAL(adcRegChanged(quint16)), control, SLOT(setAdcReg(quint16))},
             Joint{options, SIGNAL(adcResetChanged(bool)), control, SLOT(setAdcReset(bool))},
             Joint{options, SIGNAL(preampChanged(float)), control, SLOT(setPreamp(float))},
         })
        CHECKED_CONNECT(source, signal, target, method);

    joinEngineToOptions();

    for (const auto &[source, signal, target, method] :
        {
            Joint{options, SIGNAL(digOffsetChanged(int, int)), this, SIGNAL(sDigOffset(int, int))},
            Joint{options, SIGNAL(userPreampCoeffChanged(double)), control,
                SLOT(setUserPreampCoeff(double))},
            Joint{options, SIGNAL(userPreampFreqChanged(double)), control,
                SLOT(setUserFreqCoeff(double))},
            Joint{options, SIGNAL(adminPreampCoeffChanged(double)), control,
                SLOT(setAdminPreampCoeff(double))},
            Joint{options, SIGNAL(adminPreampFreqChanged(double)), control,
                SLOT(setAdminFreqCoeff(double))},
            Joint{calibration.get(), SIGNAL(userPreampCoeffChanged(double)), options,
                SLOT(setUserPreampCoeff(double))},
            Joint{calibration.get(), SIGNAL(userFreqChanged(double)), options,
                SLOT(setUserFreqCoeff(double))},
            Joint{calibration.get(), SIGNAL(adminPreampCoeffChanged(double)), options,
                SLOT(setAdminPreampCoeff(double))},
            Joint{calibration.get(), SIGNAL(adminFreqChanged(double)), options,
                SLOT(setAdminFreqCoeff(double))},
            Joint{options, SIGNAL(readArminCalibrations()), control, SLOT(setReadCalibrations())},
            Joint{options, SIGNAL(writeArminCalibrations()), control, SLOT(setWriteCalibrations())},
            Joint{options, SIGNAL(preampAutoChanged(bool)), AutoPreamp::instance(),
                SLOT(setAuto(bool))},
        })
        CHECKED_CONNECT(source, signal, target, method);

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

void ZephrinMInterface::joinEngineToOptions()
{
    struct
    {
        const char *signal;
        const char *slot;
    } const rows[] = {
        {SIGNAL(nrTapsChanged(int)), SLOT(setNrTaps(int))},
        {SIGNAL(nrDelayChanged(int)), SLOT(setNrDelay(int))},
        {SIGNAL(nrRateChanged(double)), SLOT(setNrRate(double))},
        {SIGNAL(nrLeakChanged(double)), SLOT(setNrLeak(double))},
        {SIGNAL(anfTapsChanged(int)), SLOT(setAnfTaps(int))},
        {SIGNAL(anfDelayChanged(int)), SLOT(setAnfDelay(int))},
        {SIGNAL(anfRateChanged(double)), SLOT(setAnfRate(double))},
        {SIGNAL(anfLeakChanged(double)), SLOT(setAnfLeak(double))},
        {SIGNAL(apfCwGainChanged(int)), SLOT(setCwApfGain(int))},
        {SIGNAL(apfCwQualityChanged(int)), SLOT(setCwApfQuality(int))},
        {SIGNAL(apfSsbGainChanged(int)), SLOT(setSsbApfGain(int))},
        {SIGNAL(apfSsbQualityChanged(double)), SLOT(setSsbApfQuality(double))},
        {SIGNAL(apfSsbFreqChanged(int)), SLOT(setSsbApfFreq(int))},
        {SIGNAL(nb1ThresholdChanged(double)), SLOT(setNb1Threshold(double))},
        {SIGNAL(nb2ThresholdChanged(double)), SLOT(setNb2Threshold(double))},
        {SIGNAL(dseQualityChanged(int)), SLOT(setDseQuality(int))},
        {SIGNAL(dseSwapChanged(bool)), SLOT(setDseSwap(bool))},
        {SIGNAL(wfmUsaChanged(bool)), SLOT(setWfmUsa(bool))},
        {SIGNAL(filterTapsSsbChanged(int)), SLOT(setSsbFilterTaps(int))},
        {SIGNAL(filterTapsAmChanged(int)), SLOT(setAmFilterTaps(int))},
        {SIGNAL(filterTapsDigChanged(int)), SLOT(setDigFilterTaps(int))},
        {SIGNAL(filterTapsCwChanged(int)), SLOT(setCwFilterTaps(int))},
        {SIGNAL(diglOffsetChanged(int)), SLOT(setDiglOffset(int))},
        {SIGNAL(diguOffsetChanged(int)), SLOT(setDiguOffset(int))},
        {SIGNAL(agcAttackChanged(AgcMode, REAL)), SLOT(setAgcAttack(AgcMode, REAL))},
        {SIGNAL(agcDecayChanged(AgcMode, REAL)), SLOT(setAgcDecay(AgcMode, REAL))},
        {SIGNAL(agcHangTimeChanged(AgcMode, REAL)), SLOT(setAgcHangTime(AgcMode, REAL))},
    };
    for (const auto &[signal, slot] : rows)
        CHECKED_CONNECT(m_options.data(), signal, m_dsp.get(), slot);
}

void ZephrinMInterface::setManager(DeviceManagerAbstract *manager)
{
    assert(manager != nullptr);
    if (m_manager == manager)
        return;
    m_manager = manager;
    if (m_dsp && m_options)
        joinManager();
}

void ZephrinMInterface::joinManager()
{
    DeviceManagerAbstract *const manager = m_manager;
    // A timer of the page's own: QTimer::singleShot() would keep code of the plugin until it is
    // due, which may be after the plugin has been unloaded.
    auto *timer = new QTimer(m_options.data());
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    connect(timer, &QTimer::timeout, m_options.data(),
        [options = m_options.data(), host = QPointer(manager)] {
            if (host)
                host->setDeviceMenu(options->deviceMenu());
        });
    timer->start(kMenuDelay);
    m_dsp->setSensors(manager->sensors);

    auto *const options = m_options.data();
    auto *const control = m_control.data();
    auto *const preamp = AutoPreamp::instance();
    auto *const engine = m_dsp.get();
    for (const auto &[source, signal, target, method] :
        {
            Joint{control, SIGNAL(connectStatus(int)), manager, SLOT(setServerStatus(int))},
            Joint{manager, SIGNAL(apfChanged(quint32, bool)), engine, SLOT(setApf(quint32, bool))},
            Joint{manager, SIGNAL(dseChanged(quint32, bool)), engine, SLOT(setDse(quint32, bool))},
            Joint{manager, SIGNAL(preampValueChanged(float)), options, SLOT(setPreampValue(float))},
            Joint{manager, SIGNAL(preampValueChanged(float)), control, SLOT(setPreamp(float))},
            Joint{manager, SIGNAL(waterfallFilterChanged(bool)), engine,
                SLOT(setWaterfallFilter(bool))},
            Joint{manager, SIGNAL(display4kModeChanged(bool)), this, SLOT(on4k(bool))},
            Joint{manager, SIGNAL(updateStyleGuiControls()), this, SLOT(updateGuiControls())},
            Joint{preamp, SIGNAL(adcOverflow()), manager, SIGNAL(adcOverflow())},
            Joint{preamp, SIGNAL(deltaAtt(int)), manager, SIGNAL(deltaAtt(int))},
        })
        CHECKED_CONNECT(source, signal, target, method);
    // The host reads the answer at the emission.
    CHECKED_CONNECT(
        manager, SIGNAL(sDeviceAvalible()), this, SLOT(isDeviceAvalible()), Qt::DirectConnection);
    CHECKED_CONNECT(
        manager, SIGNAL(hideSpectrumSlopesChanged(bool)), this, SLOT(onHideSpectrumSlopes(bool)));

    // The slot acts on a change only; this way it acts at least once.
    onHideSpectrumSlopes(!manager->hideSpectrumSlopes);
    onHideSpectrumSlopes(manager->hideSpectrumSlopes);
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
