// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Control/ControlM.h"
#include "Dsp/ZephrinMDSP.h"
#include "Options/ZephrinMOptions.h"
#include "ZephrinMFunctions.h"
#include "host_interfaces/BridgeAbstract.h"
#include "host_interfaces/CwParam.h"
#include "host_interfaces/DeviceAbstract.h"
#include "host_interfaces/DeviceManagerAbstract.h"
#include "host_interfaces/Repairs.h"

#include <QPointer>
#include <QScopedPointer>

#include <memory>
#include <vector>

class IqRecorder;

/// The plugin: the object that the host loads and drives.
///
/// Owns the capability tables, the engine, the device control and the options page, joins them to
/// each other and to the host, and hands the host's calls on. It does no signal work.
///
///                    host
///                     |
///     ZephrinMOptions-+-ControlM -> HardwareZephrinNANO -> D2XX
///             |            |               | IQ
///             +------> ZephrinMDSP <-------+
///
/// Device states: constructed (capabilities only), ready (after init()), opened (device open, no
/// stream), started. A stream that ends by itself raises devClosed() and leaves the device open.
///
/// Before init() and after deinit() only the capabilities answer; all else does nothing or reports
/// false.
///
/// Threads: everything on the host's GUI thread, which owns the page, the timers and the device
/// control. The lambda on the virtual cable's opened() runs on the thread that raises it.
class ZephrinMInterface : public DeviceAbstract
{
    Q_OBJECT
    Q_INTERFACES(DeviceAbstract)
    Q_PLUGIN_METADATA(IID "Velmora.VelmoraSDR2.plugin" FILE "ZephrinNano.json")

public:
    /// The parent is not taken: a plugin object belongs to its loader.
    explicit ZephrinMInterface(QWidget *parent = nullptr);
    ~ZephrinMInterface() override;

    /// Always true. Without `advanced` the page for experts is not shown. What an earlier init()
    /// built is taken down first. The repairs are those that the property Repairs::kProperty names
    /// now.
    bool init(BridgeAbstract &bridge, QLayout *layout, bool, bool advanced) override;
    void deinit() override;
    QString name() override { return QStringLiteral("ZephrinNANO"); }
    DeviceFunctionsAbstract *getAvalibleFunctions() override { return m_functions.get(); }

    /// `manager` must not be null; the one that is set already is not joined again. One that comes
    /// before init() is joined by it.
    void setManager(DeviceManagerAbstract *manager) override;
    void setIqServer(IqServerAbstract *server) override
    {
        engine(&ZephrinMDSP::setIqServer, server);
    }
    void setAudioServer(AudioServerAbstract *server) override
    {
        engine(&ZephrinMDSP::setAudioServer, server);
    }
    void setIqRecorder(IqRecorder *recorder) override { m_iqRecorder = recorder; }

    /// The record is the default one, whatever the host sets: this device has no keyer.
    void setCwParam(const SDR::CwParam &) override { }
    SDR::CwParam cwParam() const override { return m_cw; }

    bool open() override;
    void close() override;

    /// False if no device is chosen or it cannot be opened. A stream that the device refuses shows
    /// at isStart() only.
    bool start() override;

    /// Opens a closed device and leaves it open.
    void stop() override;
    bool isOpen() override;
    bool isStart() override;

    SpectrumView receiverSpectrum(unsigned long id) override;
    SpectrumView transmitterSpectrum(unsigned long) override { return {}; }
    SpectrumView bandscopeSpectrum() override { return {}; }
    CircularBuffer<COMPLEX> *getIqRingBuffer(unsigned int receiver) override;

    /// Hertz. True, also for a receiver that is not there.
    bool setRxFreq(int receiver, double freq) override;

    /// True and nothing else: the gain comes with DeviceManagerAbstract::preampValueChanged().
    bool setPreamp(unsigned int) override { return true; }

    /// Raises sWriteIQ() with what became of it; a file that cannot be opened is told in a box. A
    /// recording ends with its stream, whatever ends that, and tells so.
    void writeIQ(bool state, int channel) override;

    void receiverChannelEnable(unsigned int receiver, unsigned int channel, bool state) override
    {
        engine(&ZephrinMDSP::setChannelEnable, receiver, channel, state);
    }
    void setDownConverter(unsigned int, unsigned int channel, double hz) override
    {
        engine(&ZephrinMDSP::setDownConverter, channel, hz);
    }
    void setBandFilterIf(unsigned int, unsigned int channel, double low, double high) override
    {
        engine(&ZephrinMDSP::setBandFilterIf, channel, low, high);
    }
    void setDspMode(unsigned int, unsigned int channel, unsigned int mode) override
    {
        engine(&ZephrinMDSP::setModulation, channel, DspCore::Modulation(mode));
    }
    void setRit(unsigned int receiver, unsigned int channel, double hz) override
    {
        engine(&ZephrinMDSP::setRit, receiver, channel, hz);
    }

    void setMainVolume(int volume) override { engine(&ZephrinMDSP::setMainVolume, volume); }
    void setVolume(unsigned int receiver, unsigned int channel, int volume) override
    {
        engine(&ZephrinMDSP::setVolume, receiver, channel, volume);
    }
    void setBalance(unsigned int receiver, unsigned int channel, int balance) override
    {
        engine(&ZephrinMDSP::setBalance, receiver, channel, balance);
    }
    using DeviceAbstract::setMute;

    /// A channel below 0 is all of them.
    void setMute(unsigned int receiver, int channel, bool state) override;

    /// Of receiver 0 only, while the mode is set whatever the receiver.
    void setAgcGain(unsigned int receiver, unsigned int channel, int gain) override;
    void setAgcMode(unsigned int, unsigned int, unsigned int mode) override
    {
        engine(&ZephrinMDSP::setAgcMode, DspCore::AgcMode(mode));
    }

    void setBin(unsigned int receiver, bool on) override
    {
        engine(&ZephrinMDSP::setBin, receiver, on);
    }
    void setNb1(unsigned int receiver, bool on) override
    {
        engine(&ZephrinMDSP::setNb1, receiver, on);
    }
    void setNb2(unsigned int receiver, bool on) override
    {
        engine(&ZephrinMDSP::setNb2, receiver, on);
    }
    void setNr(unsigned int receiver, bool on) override
    {
        engine(&ZephrinMDSP::setNr, receiver, on);
    }
    void setAnf(unsigned int receiver, bool on) override
    {
        engine(&ZephrinMDSP::setAnf, receiver, on);
    }
    void setEqualizerEnable(unsigned int receiver, bool on) override
    {
        engine(&ZephrinMDSP::setEqualizerEnable, receiver, on);
    }
    void setEqualizerGains(unsigned int receiver, QList<int> gains) override
    {
        engine(&ZephrinMDSP::setEqualizerGains, receiver, QVector<int>::fromList(gains));
    }
    void setWfmStereo(unsigned int receiver, bool on) override
    {
        engine(&ZephrinMDSP::setWfmStereo, receiver, on);
    }
    void setSqlEnable(unsigned int receiver, unsigned int channel, bool on) override
    {
        engine(&ZephrinMDSP::setSqlEnable, receiver, channel, on);
    }
    void setSqlValue(unsigned int receiver, unsigned int channel, int threshold) override
    {
        engine(&ZephrinMDSP::setSqlValue, receiver, channel, threshold);
    }
    void setEnableCTCSS(int receiver, bool on) override
    {
        engine(&ZephrinMDSP::setEnableCTCSS, receiver, on);
    }
    void setToneCTCSS(int receiver, int index) override
    {
        engine(&ZephrinMDSP::setToneCTCSS, receiver, index);
    }

    void setFftSize(unsigned int size) override { engine(&ZephrinMDSP::setSpectrumSize, size); }
    void setFftAveragingType(unsigned int type) override
    {
        engine(&ZephrinMDSP::setSpectrumAveragingType, type);
    }
    void setFftAveragingNum(unsigned int count) override
    {
        engine(&ZephrinMDSP::setSpectrumAveraging, count);
    }
    void setFftUpdateTime(unsigned int ms) override
    {
        engine(&ZephrinMDSP::setSpectrumUpdateTime, ms);
    }

    void writeSettings(QSettings *settings) override;
    void readSettings(QSettings *settings) override;
    void emitAllSignals() override;

    /// Connects the settings of the page to the engine.
    static void joinEngine(const ZephrinMOptions &options, const ZephrinMDSP &engine);

private slots:
    void onSampleRate(int index);
    void on4k(bool state);
    void updateGuiControls();
    void onStoped();
    bool isDeviceAvalible();
    void onHideSpectrumSlopes(bool enable);

private:
    /// Hands a call on to the engine, while there is one.
    template <typename... Parameters, typename... Arguments>
    void engine(void (ZephrinMDSP::*setter)(Parameters...), Arguments &&...arguments)
    {
        if (m_dsp)
            (m_dsp.get()->*setter)(std::forward<Arguments>(arguments)...);
    }

    // Connections of the host's services, by type.
    Repairs askedRepairs() const;
    void followOptions();
    void followManager();
    void joinHostAudio();
    void leaveHostAudio();
    void joinVirtualCable();
    void joinHostControls();

    // Tables of checked connections.
    void joinParts();
    void joinManager();

    void hideExpertPage();
    void offerMenu();
    void closeOptions();
    void sendNotchFilters();
    void setNotch(std::size_t band, std::size_t id, bool enable, double hz, double width);
    void endRecording();
    void warnOfRecording();

    std::shared_ptr<ZephrinMFunctions> m_functions;
    QScopedPointer<ZephrinMOptions> m_options;
    QScopedPointer<ControlM> m_control;
    std::shared_ptr<ZephrinMDSP> m_dsp;
    SDR::CwParam m_cw;
    std::vector<float> m_spectrum;  // dB
    std::vector<float> m_waterfall; // dB
    IqRecorder *m_iqRecorder = nullptr;
    QPointer<BridgeAbstract> m_bridge;
    QPointer<DeviceManagerAbstract> m_manager;
    bool m_hideSlopes = false;
    bool m_isReading = false; // the page its settings
    QMetaObject::Connection m_cableOpened;
    QPointer<QObject> m_rateChange; // while one waits for the stream to restart
    QPointer<QWidget> m_leftPage;   // taken down meanwhile; deleted at the latest with this
};
