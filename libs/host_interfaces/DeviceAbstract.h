// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"
#include "host_interfaces/CwParam.h"
#include "host_interfaces/SpectrumView.h"
#include "vm_library/source/containers/CircularBuffer.h"

#include <QList>
#include <QObject>
#include <QString>

class AudioServerAbstract;
class BridgeAbstract;
class DeviceFunctionsAbstract;
class DeviceManagerAbstract;
class IqRecorder;
class IqServerAbstract;
class QLayout;
class QSettings;

namespace Velmora
{
class QRingBuffer32f;
}

/// A radio as the host sees it: the root object of a device plugin.
///
/// Receivers, transmitters, channels and filters are counted from 0; frequencies and rates are in
/// hertz. A device overrides what it can do. Where it does not, an operation does nothing and
/// reports false. The order of the virtual operations and of the signals is part of the binary
/// contract, and the misspelt names are the interface's own.
///
/// Life: getAvalibleFunctions() works from construction on, everything else after init(). Then come
/// setManager(), the servers, readSettings(), setters, and start() and stop(), open() and close()
/// in any order, until deinit().
///
/// Threads: all operations on the host's GUI thread.
class DeviceAbstract : public QObject
{
    Q_OBJECT

public:
    explicit DeviceAbstract(QObject *parent = nullptr) : QObject(parent) { }

    /// Builds the device. The bridge outlives it; the options widget goes into the layout, or shows
    /// on its own without one. The first flag is free for the device; advanced keeps the expert
    /// pages. False if the device cannot work.
    virtual bool init(BridgeAbstract &, QLayout *, bool, bool /*advanced*/) { return false; }

    /// Takes down what init() built. May be called again.
    virtual void deinit() { }

    virtual QString name() { return QStringLiteral("No name"); }

    /// None of these is owned. The servers may be null.
    virtual void setManager(DeviceManagerAbstract *) { }
    virtual void setIqServer(IqServerAbstract *) { }
    virtual void setAudioServer(AudioServerAbstract *) { }

    virtual void setCwParam(const SDR::CwParam &) = 0;
    virtual SDR::CwParam cwParam() const = 0;

public Q_SLOTS:
    /// Opens the hardware without a stream. False if there is none.
    virtual bool open() = 0;

    /// Ends the stream and gives the hardware back.
    virtual void close() = 0;

    /// Opens the hardware if need be and starts the stream.
    virtual bool start() = 0;

    /// Ends the stream; the hardware stays open.
    virtual void stop() = 0;

    /// For a change of language.
    virtual void retranslate() { }

public:
    /// The device's; lives as long as it.
    virtual DeviceFunctionsAbstract *getAvalibleFunctions() = 0;

    virtual void setCommand(QString) { }
    virtual bool isOpen() = 0;
    virtual bool isStart() = 0;
    virtual void setIqRecorder(IqRecorder *) { }
    virtual void setWfmStereo(unsigned int, bool) { }
    virtual void setGenTX(bool) { }

    /// Starts or ends the IQ recording of a receiver.
    virtual void writeIQ(bool, int) { }

    /// Squelch by a sub-audible tone.
    virtual void setEnableCTCSS(int, bool) { }
    virtual void setToneCTCSS(int, int) { }
    virtual void setEnableTxCTCSS(int, bool) { }
    virtual void setToneTxCTCSS(int, int) { }

    virtual void setBandScope(bool, unsigned long long, unsigned int) { }
    virtual void receiverEnabled(unsigned int, bool) { }
    virtual void receiverChannelEnable(unsigned int, unsigned int, bool) { }
    virtual bool setRxToneMode(unsigned int, bool) { return false; }
    virtual bool setRxTxMode(unsigned int, bool) { return false; }

    /// Transmission: a receiver leaves all of these alone.
    virtual void setTrxMode(unsigned int, unsigned int, bool) { }
    virtual void setTonMode(unsigned int, unsigned int, bool) { }
    virtual void setKeyer(unsigned int, unsigned int, bool) { }
    virtual void setKeyer(unsigned int, unsigned int, bool, bool) { }
    virtual void setSplit(unsigned int, bool) { }
    virtual void setMCoderPtt(unsigned int, bool) { }
    virtual void setCwPtt(unsigned int, bool) { }
    virtual void setKeyer(unsigned int, bool) { }
    virtual void setKeyer(unsigned int, bool, bool) { }

    /// The last spectrum of a receiver, a transmitter, the band scope.
    virtual SpectrumView receiverSpectrum(unsigned long) = 0;
    virtual SpectrumView transmitterSpectrum(unsigned long) = 0;
    virtual SpectrumView bandscopeSpectrum() = 0;

    /// Tunes the centre of a receiver.
    virtual bool setRxFreq(int, double) { return false; }
    virtual bool setPreamp(unsigned int) { return false; }

    virtual bool setMute(bool) { return false; }
    virtual bool setExtCtrl(unsigned int) { return false; }
    virtual bool setDrive(unsigned int, unsigned int) { return false; }
    virtual bool setToneDrive(unsigned int, unsigned int) { return false; }
    virtual bool setMonEnable(bool) { return false; }
    virtual bool setMonValue(int) { return false; }
    virtual bool setMicId(unsigned int, unsigned int) { return false; }
    virtual bool setMicGain(unsigned int, int) { return false; }
    virtual bool setMicAgcEnable(unsigned int, bool) { return false; }
    virtual void setTone(unsigned int, bool) { }
    virtual void setPA(unsigned int, bool) { }
    virtual bool setTxFreq(int, unsigned long long) { return false; }

    virtual void setSqlEnable(unsigned int, unsigned int, bool) { }
    virtual void setSqlValue(unsigned int, unsigned int, int) { }

    /// Raises the signals that carry the present settings.
    virtual void emitAllSignals() = 0;

    virtual void setMainVolume(int) { }
    virtual void setVolume(unsigned int, unsigned int, int) { }
    virtual void setBalance(unsigned int, unsigned int, int) { }

    /// A channel below 0 mutes the receiver's sum.
    virtual void setMute(unsigned int, int, bool) { }
    virtual void setRit(unsigned int, unsigned int, double) { }
    virtual void setXit(unsigned int, unsigned int, double) { }

    virtual void setFftSize(unsigned int) { }
    virtual void setFftAveragingType(unsigned int) { }
    virtual void setFftAveragingNum(unsigned int) { }
    virtual void setFftUpdateTime(unsigned int) { } // ms

    /// Offset of a channel from the centre.
    virtual void setDownConverter(unsigned int, unsigned int, double) { }

    /// Edges of the channel filter relative to the carrier.
    virtual void setBandFilterIf(unsigned int, unsigned int, double, double) { }
    virtual void setDspMode(unsigned int, unsigned int, unsigned int) { }
    virtual void setAgcGain(unsigned int, unsigned int, int) { }
    virtual void setAgcMode(unsigned int, unsigned int, unsigned int) { }
    virtual void setBin(unsigned int, bool) { }
    virtual void setNb1(unsigned int, bool) { }
    virtual void setNb2(unsigned int, bool) { }
    virtual void setNr(unsigned int, bool) { }
    virtual void setAnf(unsigned int, bool) { }
    virtual void setEqualizerEnable(unsigned int, bool) { }
    virtual void setEqualizerGains(unsigned int, QList<int>) { }

    virtual void setTxEqualizer(unsigned int, bool) { }
    virtual void setTxEqualizer(unsigned int, QList<int>) { }
    virtual void setCompressorEnable(unsigned int, bool) { }
    virtual void setCompressorValue(unsigned int, int) { }
    virtual void setCompressorThreshold(unsigned int, int) { }
    virtual void setCompressorClip(unsigned int, int) { }
    virtual void setVoxEnable(unsigned int, bool) { }

    /// Audio that the device itself plays or puts out, where it has such outputs.
    virtual void setScEnable(bool) { }
    virtual void setScSampleRate(double) { }
    virtual Velmora::QRingBuffer32f *getScRingBuffer() { return nullptr; }
    virtual void setLineOutEnable(unsigned int, bool) { }
    virtual void setLineOutSampleRate(unsigned int, double) { }
    virtual QList<Velmora::QRingBuffer32f *> getLineOutBuffers() { return {}; }

    /// The device's ring of raw IQ blocks, for one reader of the host. Null for a receiver that the
    /// device does not have.
    virtual CircularBuffer<COMPLEX> *getIqRingBuffer(unsigned int) { return nullptr; }

    virtual void writeSettings(QSettings *) { }
    virtual void readSettings(QSettings *) { }
    virtual void writeProfile(QSettings *) { }
    virtual void readProfile(QSettings *) { }

    virtual void vacEnable(unsigned int, bool) { }
    virtual void setVoicePlay(unsigned int, bool) { }
    virtual void setVoiceRec(unsigned int, bool) { }
    virtual void setVoicePlayPanel(unsigned int, bool) { }
    virtual void setRxAntSw(unsigned int) { }
    virtual void setTxAntSw(unsigned int) { }
    virtual void setBurstToneEnable(unsigned int, bool) { }
    virtual void setBurstToneParam(unsigned int, double, double) { }
    virtual void setMonEnableInSsbForVac(bool) { }
    virtual void setMonEnableInSsbForVoiceRecorder(bool) { }

Q_SIGNALS:
    /// Width of the panorama.
    void changedSampleRate(double);

    /// The stream ended by itself.
    void devClosed();

    void txDrive(uint transmitter, uint value);
    void txToneDrive(uint transmitter, uint value);
    void txMicId(uint transmitter, uint index);
    void txMicValue(uint transmitter, int value);
    void txEqualizer(uint transmitter, bool state);
    void txEqualizer(uint transmitter, QList<int> values);
    void txVoxEnable(uint transmitter, bool state);

    /// A spectrum of the receiver is ready for receiverSpectrum().
    void rxSpectrum(uint);

    void txSpectrum(uint);
    void bsSpectrum();
    void dBmMeter(uint receiver, uint channel, double);
    void adcMeter(uint receiver, uint channel, double, double);
    void powerMeter(uint transmitter, uint channel, double value);
    void swrMeter(uint transmitter, uint channel, double value);
    void micMeter(uint transmitter, uint channel, double value);
    void temperatureMeter(double value);
    void UpitMeter(double value);
    void IpitMeter(double value);
    void fanEnable(bool);
    void txEnable(uint transmitter, bool state);
    void toneChacked(uint transmitter, bool state);
    void moxChacked(uint transmitter, bool state);
    void moxEnable(uint transmitter, bool state);
    void trxLock(uint transmitter, bool state);
    void sTxComp(uint channel, bool state);
    void sTxCompValue(uint channel, int val);
    void sTxCompThr(uint channel, int val);
    void txMicAgcEnable(uint transmitter, bool state);
    void sCwKeyProg(uint transmitter, bool keyer);
    void sCwKeyProgDashDot(uint transmitter, bool dash, bool dot);
    void sVacEnable(uint tranceiver, bool state);
    void sCw(uint tranceiver, bool enable, bool iambic, bool revPaddle, bool breakIn,
        uint breakInterval, uint wpm, double freq, uint tau, uint dotw);

    /// What became of a recording: the state, and the receiver.
    void sWriteIQ(bool state, int channel);

    void sIqFixedFreqDds(bool state, double freq);
    void sTxBandFilter(uint tranceiver, int low, int high);
    void sDigOffset(int diglOffset, int diguOffset);
    void sVoicePlay(uint receiver, bool state);
    void sVoiceRec(uint receiver, bool state);
    void updatePreamp();
};

Q_DECLARE_INTERFACE(DeviceAbstract, "Velmora.VelmoraSDR2.plugin")
