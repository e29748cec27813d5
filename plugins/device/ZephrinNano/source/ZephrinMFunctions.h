// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"
#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <atomic>

/// What this receiver can do: one receive channel, no transmitter, a preamp with a level.
///
/// The amateur bands are those of AmateurRegion at construction; a later change of country or
/// switches does not reach them. All else is a constant of hardware and signal processing but for
/// the four current rates, which the plugin sets when the user chooses another rate.
///
/// Any thread may read; the rates alone change, each on its own. A mode or filter number that is
/// none is answered with the values given at the operation, or with those of a plain filter.
class ZephrinMFunctions : public DeviceFunctionsAbstract
{
public:
    /// GUI thread, as AmateurRegion is.
    ZephrinMFunctions();

    /// 0 with the preamp on, else 1; the attenuator does not matter.
    int getPreampIndex(bool attenuator, bool preamp) override;

    /// The attenuator is on at index 0 alone; `preamp` is left as it is.
    void getAttAmpFromIndex(int index, bool *attenuator, bool *preamp) override;

    double bandScopeMaxWide() override { return 62500000.0; }
    QList<int> sampleRates() override { return m_sampleRates; }
    QList<QString> preamps() override { return m_preamps; }
    bool variablePreamp() override { return true; }
    double minimumPreamp() override { return -31.5; }
    double maximumPreamp() override { return 6.0; }
    double stepPreamp() override { return 0.5; }

    double getCurrentSampleRateRX() override { return m_sampleRateRx; }
    double getCurrentSampleRateTX() override { return m_sampleRateTx; }
    double getCurrentPanSampleRateRX() override { return m_panSampleRateRx; }
    double getCurrentPanSampleRateTX() override { return m_panSampleRateTx; }

    /// Hertz.
    void setCurrentSampleRateRX(REAL rate) { m_sampleRateRx = rate; }
    void setCurrentSampleRateTX(REAL rate) { m_sampleRateTx = rate; }
    void setCurrentPanSampleRateRX(REAL rate) { m_panSampleRateRx = rate; }
    void setCurrentPanSampleRateTX(REAL rate) { m_panSampleRateTx = rate; }

    bool enabledBandScope() override { return false; }
    QList<GlobalBand> listBands() override { return m_globalBands; }
    QList<AmatureBand> listAmatureBands() override { return m_amateurBands; }
    int getBandFromFreq(double frequency) override;
    QList<ModeItem> listModes() override { return m_modes; }

    /// By AmateurRegion::Band, AM for a number above the 2 m band's. The host's numbers are not
    /// those of listAmatureBands() once a band is missing there.
    Mode defaultMode(unsigned int band) override;

    int rxMaxChannel() override { return m_rxChannels; }
    int txMaxChannel() override { return m_txChannels; }
    QList<MIC> listMicrophones() override { return m_microphones; }
    bool isMicVisible(Mode) override { return false; }

    /// "Long" for a number that is no mode.
    int defaultAgcMode(unsigned int mode) override;
    QList<QString> listAgc() override { return m_agcNames; }

    int defaultFilterId(Mode mode) override;
    int maxFilterNum() override;
    bool isFilterVisible(Mode) override { return true; }
    bool isEnableVaribleFilter(Mode mode) override { return mode != DRM; }
    int filterNum(Mode mode) override;
    QString filterName(Mode mode, unsigned int filter) override;

    /// Both edges 0 for a filter or mode that is none.
    QPair<double, double> listFilterNum(Mode mode, unsigned int filter) override;

    bool isSimmetricFilter(Mode mode) override;
    bool isLockFilter(Mode mode) override { return mode == DRM; }
    bool isFilterEnable(Mode) override { return true; }

    /// Those of WFM for a number that is no mode.
    QPair<double, double> filterLimits(Mode mode) override;

    bool Vox() override { return false; }
    bool Fan() override { return false; }
    bool Temperature() override { return false; }
    bool Upit() override { return true; }
    double samleRateLineOut() override { return 44100.0; }

private:
    QList<int> m_sampleRates;
    QList<MIC> m_microphones;
    QList<ModeItem> m_modes;
    QList<AmatureBand> m_amateurBands;
    QList<GlobalBand> m_globalBands;
    QList<QString> m_preamps;
    QList<QString> m_agcNames;
    int m_txChannels = 0;
    int m_rxChannels = 1;

    // Hertz; written by the GUI thread, read by any.
    std::atomic<REAL> m_sampleRateRx{192000.0};
    std::atomic<REAL> m_sampleRateTx{48000.0};
    std::atomic<REAL> m_panSampleRateRx{0.0};
    std::atomic<REAL> m_panSampleRateTx{0.0};
};
