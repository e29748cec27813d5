// SPDX-License-Identifier: GPL-3.0-or-later
#include "ZephrinMInterface.h"

#include "host_interfaces/EngineLimits.h"
#include "host_interfaces/IQRecorderConfigure.h"
#include "host_interfaces/RadioNotchFilterControlAbstract.h"
#include "signal_primitives/ipps.h"
#include "vm_library/source/log/Log.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QMetaType>
#include <spdlog/spdlog.h>

#include <array>
#include <stdexcept>

namespace
{
constexpr auto SAMPLE_RATES = EngineLimits::kRatesHz; // hertz

// What of each device rate a panorama without the slopes of the input filter shows, hertz.
constexpr std::array<int, SAMPLE_RATES.size()> SAMPLE_RATES_SP = {
    43000, 86000, 172000, 344000, 688000, 1376000, 1720000, 2293333, 2752000};

constexpr double kDbPerAttenuatorStep = 0.5;
constexpr int kReceiver = 0; // the only one

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
}

void ZephrinMInterface::setIqServer(IqServerAbstract *server)
{
    engine(&ZephrinMDSP::setIqServer, server);
}

void ZephrinMInterface::setAudioServer(AudioServerAbstract *server)
{
    engine(&ZephrinMDSP::setAudioServer, server);
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
    if (!state || !isOpen() || !m_dsp->hasThread()) {
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

void ZephrinMInterface::receiverChannelEnable(
    unsigned int receiver, unsigned int channel, bool state)
{
    engine(&ZephrinMDSP::setChannelEnable, receiver, channel, state);
}

void ZephrinMInterface::setDownConverter(unsigned int, unsigned int channel, double hz)
{
    engine(&ZephrinMDSP::setDownConverter, channel, hz);
}

void ZephrinMInterface::setBandFilterIf(unsigned int, unsigned int channel, double low, double high)
{
    engine(&ZephrinMDSP::setBandFilterIf, channel, low, high);
}

void ZephrinMInterface::setDspMode(unsigned int, unsigned int channel, unsigned int mode)
{
    engine(&ZephrinMDSP::setModulation, channel, DspCore::Modulation(mode));
}

void ZephrinMInterface::setRit(unsigned int receiver, unsigned int channel, double hz)
{
    engine(&ZephrinMDSP::setRit, receiver, channel, hz);
}

void ZephrinMInterface::setMainVolume(int volume)
{
    engine(&ZephrinMDSP::setMainVolume, volume);
}

void ZephrinMInterface::setVolume(unsigned int receiver, unsigned int channel, int volume)
{
    engine(&ZephrinMDSP::setVolume, receiver, channel, volume);
}

void ZephrinMInterface::setBalance(unsigned int receiver, unsigned int channel, int balance)
{
    engine(&ZephrinMDSP::setBalance, receiver, channel, balance);
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

void ZephrinMInterface::setAgcMode(unsigned int, unsigned int, unsigned int mode)
{
    engine(&ZephrinMDSP::setAgcMode, DspCore::AgcMode(mode));
}

void ZephrinMInterface::setBin(unsigned int receiver, bool state)
{
    engine(&ZephrinMDSP::setBin, receiver, state);
}

void ZephrinMInterface::setNb1(unsigned int receiver, bool state)
{
    engine(&ZephrinMDSP::setNb1, receiver, state);
}

void ZephrinMInterface::setNb2(unsigned int receiver, bool state)
{
    engine(&ZephrinMDSP::setNb2, receiver, state);
}

void ZephrinMInterface::setNr(unsigned int receiver, bool state)
{
    engine(&ZephrinMDSP::setNr, receiver, state);
}

void ZephrinMInterface::setAnf(unsigned int receiver, bool state)
{
    engine(&ZephrinMDSP::setAnf, receiver, state);
}

void ZephrinMInterface::setEqualizerEnable(unsigned int receiver, bool state)
{
    engine(&ZephrinMDSP::setEqualizerEnable, receiver, state);
}

void ZephrinMInterface::setEqualizerGains(unsigned int receiver, QList<int> gains)
{
    engine(&ZephrinMDSP::setEqualizerGains, receiver, QVector<int>::fromList(gains));
}

void ZephrinMInterface::setWfmStereo(unsigned int receiver, bool state)
{
    engine(&ZephrinMDSP::setWfmStereo, receiver, state);
}

void ZephrinMInterface::setSqlEnable(unsigned int receiver, unsigned int channel, bool state)
{
    engine(&ZephrinMDSP::setSqlEnable, receiver, channel, state);
}

void ZephrinMInterface::setSqlValue(unsigned int receiver, unsigned int channel, int threshold)
{
    engine(&ZephrinMDSP::setSqlValue, receiver, channel, threshold);
}

void ZephrinMInterface::setEnableCTCSS(int receiver, bool state)
{
    engine(&ZephrinMDSP::setEnableCTCSS, receiver, state);
}

void ZephrinMInterface::setToneCTCSS(int receiver, int index)
{
    engine(&ZephrinMDSP::setToneCTCSS, receiver, index);
}

void ZephrinMInterface::setFftSize(unsigned int size)
{
    engine(&ZephrinMDSP::setSpectrumSize, size);
}

void ZephrinMInterface::setFftAveragingType(unsigned int type)
{
    engine(&ZephrinMDSP::setSpectrumAveragingType, type);
}

void ZephrinMInterface::setFftAveragingNum(unsigned int count)
{
    engine(&ZephrinMDSP::setSpectrumAveraging, count);
}

void ZephrinMInterface::setFftUpdateTime(unsigned int ms)
{
    engine(&ZephrinMDSP::setSpectrumUpdateTime, ms);
}

void ZephrinMInterface::writeSettings(QSettings *settings)
{
    if (m_options)
        m_options->writeSettings(settings);
}

void ZephrinMInterface::readSettings(QSettings *settings)
{
    if (m_options)
        m_options->readSettings(settings);
    emitAllSignals();
}

void ZephrinMInterface::emitAllSignals()
{
    if (m_options)
        onSampleRate(m_options->sampleRateIndex());
}

/// The order matters: a running stream restarts inside the control's part.
void ZephrinMInterface::onSampleRate(int index)
{
    if (std::size_t(index) >= SAMPLE_RATES.size() || !m_control)
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
