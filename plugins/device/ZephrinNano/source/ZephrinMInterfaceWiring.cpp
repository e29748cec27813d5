// SPDX-License-Identifier: GPL-3.0-or-later
// The tables of connections by text, in the order in which they are made.
#include "CheckedConnect.h"
#include "Control/AutoPreamp.h"
#include "Control/CalibrationControl.h"
#include "ZephrinMInterface.h"

#include <initializer_list>

namespace
{
struct Joint
{
    const QObject *source;
    const char *signal;
    const QObject *target;
    const char *method;
    Qt::ConnectionType type = Qt::AutoConnection;
};

void join(std::initializer_list<Joint> table)
{
    for (const auto &[source, signal, target, method, type] : table)
        CHECKED_CONNECT(source, signal, target, method, type);
}
} // namespace

void ZephrinMInterface::joinParts()
{
    auto *const options = m_options.data();
    auto *const control = m_control.data();
    auto *const calibration = control->calibration().get();
    join({
        {control, SIGNAL(statusChanged(QString)), options, SLOT(setStatus(QString))},
        {control, SIGNAL(stoped()), this, SIGNAL(devClosed())},
        {control, SIGNAL(stoped()), this, SLOT(onStoped())},
        {options, SIGNAL(sampleRateChanged(int)), this, SLOT(onSampleRate(int))},
        {options, SIGNAL(adcRegChanged(quint16)), control, SLOT(setAdcReg(quint16))},
        {options, SIGNAL(adcResetChanged(bool)), control, SLOT(setAdcReset(bool))},
        {options, SIGNAL(preampChanged(float)), control, SLOT(setPreamp(float))},
    });
    joinEngine(*options, *m_dsp);
    join({
        {options, SIGNAL(digOffsetChanged(int, int)), this, SIGNAL(sDigOffset(int, int))},
        {options, SIGNAL(userPreampCoeffChanged(double)), control,
            SLOT(setUserPreampCoeff(double))},
        {options, SIGNAL(userPreampFreqChanged(double)), control, SLOT(setUserFreqCoeff(double))},
        {options, SIGNAL(adminPreampCoeffChanged(double)), control,
            SLOT(setAdminPreampCoeff(double))},
        {options, SIGNAL(adminPreampFreqChanged(double)), control, SLOT(setAdminFreqCoeff(double))},
        {calibration, SIGNAL(userPreampCoeffChanged(double)), options,
            SLOT(setUserPreampCoeff(double))},
        {calibration, SIGNAL(userFreqChanged(double)), options, SLOT(setUserFreqCoeff(double))},
        {calibration, SIGNAL(adminPreampCoeffChanged(double)), options,
            SLOT(setAdminPreampCoeff(double))},
        {calibration, SIGNAL(adminFreqChanged(double)), options, SLOT(setAdminFreqCoeff(double))},
        {options, SIGNAL(readArminCalibrations()), control, SLOT(setReadCalibrations())},
        {options, SIGNAL(writeArminCalibrations()), control, SLOT(setWriteCalibrations())},
        {options, SIGNAL(preampAutoChanged(bool)), AutoPreamp::instance(), SLOT(setAuto(bool))},
    });
}

void ZephrinMInterface::joinEngine(const ZephrinMOptions &options, const ZephrinMDSP &engine)
{
    const struct
    {
        const char *signal;
        const char *slot;
    } kRows[] = {
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
    for (const auto &[signal, slot] : kRows)
        CHECKED_CONNECT(&options, signal, &engine, slot);
}

void ZephrinMInterface::joinManager()
{
    auto *const manager = m_manager.data();
    auto *const options = m_options.data();
    auto *const control = m_control.data();
    auto *const preamp = AutoPreamp::instance();
    auto *const engine = m_dsp.get();
    join({
        {control, SIGNAL(connectStatus(int)), manager, SLOT(setServerStatus(int))},
        {manager, SIGNAL(apfChanged(quint32, bool)), engine, SLOT(setApf(quint32, bool))},
        {manager, SIGNAL(dseChanged(quint32, bool)), engine, SLOT(setDse(quint32, bool))},
        {manager, SIGNAL(preampValueChanged(float)), options, SLOT(setPreampValue(float))},
        {manager, SIGNAL(preampValueChanged(float)), control, SLOT(setPreamp(float))},
        {manager, SIGNAL(waterfallFilterChanged(bool)), engine, SLOT(setWaterfallFilter(bool))},
        {manager, SIGNAL(display4kModeChanged(bool)), this, SLOT(on4k(bool))},
        {manager, SIGNAL(updateStyleGuiControls()), this, SLOT(updateGuiControls())},
        {preamp, SIGNAL(adcOverflow()), manager, SIGNAL(adcOverflow())},
        {preamp, SIGNAL(deltaAtt(int)), manager, SIGNAL(deltaAtt(int))},
        // The host reads the answer at the emission.
        {manager, SIGNAL(sDeviceAvalible()), this, SLOT(isDeviceAvalible()), Qt::DirectConnection},
        {manager, SIGNAL(hideSpectrumSlopesChanged(bool)), this, SLOT(onHideSpectrumSlopes(bool))},
    });
}
