// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <QList>
#include <QPair>
#include <QString>

/// What a device can do. The host reads it to build band lists, mode and filter buttons and menus.
///
/// Frequencies and rates are in hertz, levels in dB. Modes, bands, filters and microphones are
/// counted from 0. The host may read from any thread, so a device fixes its answers before it hands
/// the object out. The misspelt names are the interface's own.
class DeviceFunctionsAbstract
{
public:
    /// The host passes these numbers, also as plain integers; they never change.
    enum Mode : int {
        AM = 0,
        SAM = 1,
        DSB = 2,
        LSB = 3,
        USB = 4,
        CW = 5,
        NFM = 6,
        DIGL = 7,
        DIGU = 8,
        WFM = 9,
        DRM = 10,
    };

    /// A range that the device covers as a whole, both edges included.
    struct GlobalBand
    {
        quint64 low = 0;  // Hz
        quint64 high = 0; // Hz
        QString name;
    };

    /// An amateur band, both edges included.
    struct AmatureBand
    {
        quint64 low = 0;  // Hz
        quint64 high = 0; // Hz
        QString name;
    };

    struct ModeItem
    {
        Mode mode = AM;
        QString name;
    };

    /// A microphone input.
    struct MIC
    {
        unsigned int id = 0;
        QString name;
    };

    virtual ~DeviceFunctionsAbstract() = default;

    /// Position in preamps() of a combination of attenuator and amplifier.
    virtual int getPreampIndex(bool attenuator, bool preamp) = 0;

    /// The way back. Either pointer may be null.
    virtual void getAttAmpFromIndex(int index, bool *attenuator, bool *preamp) = 0;

    virtual int maxPowerAmp() { return 30; }
    virtual bool showTxSpectrumInCwWithMoc() { return true; }
    virtual bool recorderIQ() { return true; }

    /// Widest band scope.
    virtual double bandScopeMaxWide() = 0;

    /// Empty where the device's own options choose the rate.
    virtual QList<int> sampleRates() = 0;

    /// Names of the fixed preamp steps, empty with variablePreamp().
    virtual QList<QString> preamps() = 0;

    /// True if the preamp is set as a level, from minimumPreamp() to maximumPreamp() in
    /// stepPreamp().
    virtual bool variablePreamp() = 0;
    virtual double minimumPreamp() = 0;
    virtual double maximumPreamp() = 0;
    virtual double stepPreamp() = 0;

    virtual double getCurrentSampleRateRX() = 0;
    virtual double getCurrentSampleRateTX() = 0;

    /// Width of the panorama, which may be less than the sample rate.
    virtual double getCurrentPanSampleRateRX() = 0;
    virtual double getCurrentPanSampleRateTX() = 0;

    virtual bool enabledBandScope() = 0;
    virtual QList<GlobalBand> listBands() = 0;
    virtual QList<AmatureBand> listAmatureBands() = 0;
    virtual int getBand(unsigned int) { return 0; }

    /// Position in listAmatureBands() of the first band that holds the frequency; the length of the
    /// list if none does.
    virtual int getBandFromFreq(double frequency) = 0;

    virtual QList<ModeItem> listModes() = 0;

    /// The usual mode of an amateur band.
    virtual Mode defaultMode(unsigned int band) = 0;

    virtual int rxMaxChannel() = 0;
    virtual int txMaxChannel() = 0;
    virtual QList<MIC> listMicrophones() = 0;
    virtual bool isMicVisible(Mode mode) = 0;

    /// Position in listAgc() for a mode.
    virtual int defaultAgcMode(unsigned int mode) = 0;
    virtual QList<QString> listAgc() = 0;

    virtual int defaultFilterId(Mode mode) = 0;
    virtual int maxFilterNum() = 0;
    virtual bool isFilterVisible(Mode mode) = 0;
    virtual bool isEnableVaribleFilter(Mode mode) = 0;
    virtual int filterNum(Mode mode) = 0;

    /// Empty for a filter or mode that is none.
    virtual QString filterName(Mode mode, unsigned int filter) = 0;

    /// Low and high edge relative to the carrier.
    virtual QPair<double, double> listFilterNum(Mode mode, unsigned int filter) = 0;

    /// True if the edges move together.
    virtual bool isSimmetricFilter(Mode mode) = 0;
    virtual bool isLockFilter(Mode mode) = 0;
    virtual bool isFilterEnable(Mode mode) = 0;

    /// Lowest low edge and highest high edge relative to the carrier.
    virtual QPair<double, double> filterLimits(Mode mode) = 0;

    /// True if the device has the function or the meter.
    virtual bool Vox() = 0;
    virtual bool Fan() = 0;
    virtual bool Temperature() = 0;
    virtual bool Upit() = 0;
    virtual bool Ipit() { return false; }

    virtual int defaultPreamp() { return 0; }
    virtual bool savePreampInBand() { return true; }
    virtual bool useLpf() { return false; }
    virtual double samleRateLineOut() = 0;

    /// Positions of the aerial switches.
    virtual int rxAntSwCount() { return 1; }
    virtual int txAntSwCount() { return 1; }
    virtual int rxVhfAntSwCount() { return 0; }
    virtual int txVhfAntSwCount() { return 0; }

    virtual int extCtrlBits() { return 0; }
    virtual bool duplex() { return false; }

    /// Names of the aerial inputs and outputs.
    virtual QList<QString> antRxHf() { return {}; }
    virtual QList<QString> antTxHf() { return {}; }
    virtual QList<QString> antRxVHf() { return {}; }
    virtual QList<QString> antTxVHf() { return {}; }
    virtual QList<QString> antRxUHf() { return {}; }
    virtual QList<QString> antTxUHf() { return {}; }

    virtual bool enableAdcIn() { return false; }
    virtual bool enableDacOut() { return false; }
    virtual bool isRemote() { return false; }
    virtual bool atu() { return false; }
    virtual bool avalibleSoundCard() { return true; }
};

// A mode goes from the host to the demodulator by its number.
static_assert(DeviceFunctionsAbstract::AM == int(DspCore::Modulation::AM));
static_assert(DeviceFunctionsAbstract::SAM == int(DspCore::Modulation::SAM));
static_assert(DeviceFunctionsAbstract::DSB == int(DspCore::Modulation::DSB));
static_assert(DeviceFunctionsAbstract::LSB == int(DspCore::Modulation::LSB));
static_assert(DeviceFunctionsAbstract::USB == int(DspCore::Modulation::USB));
static_assert(DeviceFunctionsAbstract::CW == int(DspCore::Modulation::CW));
static_assert(DeviceFunctionsAbstract::NFM == int(DspCore::Modulation::NFM));
static_assert(DeviceFunctionsAbstract::DIGL == int(DspCore::Modulation::DIGL));
static_assert(DeviceFunctionsAbstract::DIGU == int(DspCore::Modulation::DIGU));
static_assert(DeviceFunctionsAbstract::WFM == int(DspCore::Modulation::WFM));
static_assert(DeviceFunctionsAbstract::DRM == int(DspCore::Modulation::DRM));
