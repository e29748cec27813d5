// SPDX-License-Identifier: GPL-3.0-or-later
#include "ToolSetup.h"

#include "Dsp/ZephrinMDSP.h"

namespace host
{
namespace
{
constexpr unsigned kReceiver = 0;
constexpr unsigned kChannelA = 0;
constexpr unsigned kChannelB = 1;
} // namespace

void ToolSetup::prepare(const ToolSettings &settings, double centerHz)
{
    setUpBlankers(settings);
    setUpNr(settings.nr);
    setUpAnf(settings.anf);
    setUpEffects(settings);
    setUpSquelch(settings);
    setUpChannels(settings, centerHz);
}

void ToolSetup::setUpBlankers(const ToolSettings &settings)
{
    if (settings.nb1Threshold)
        m_engine.setNb1Threshold(*settings.nb1Threshold);
    if (settings.nb2Threshold)
        m_engine.setNb2Threshold(*settings.nb2Threshold);
    m_engine.setNb1(kReceiver, settings.nb1);
    m_engine.setNb2(kReceiver, settings.nb2);
}

void ToolSetup::setUpNr(const PredictorSettings &settings)
{
    if (settings.taps)
        m_engine.setNrTaps(*settings.taps);
    if (settings.delay)
        m_engine.setNrDelay(*settings.delay);
    if (settings.rate)
        m_engine.setNrRate(*settings.rate);
    if (settings.leak)
        m_engine.setNrLeak(*settings.leak);
    m_engine.setNr(kReceiver, settings.on);
}

void ToolSetup::setUpAnf(const PredictorSettings &settings)
{
    if (settings.taps)
        m_engine.setAnfTaps(*settings.taps);
    if (settings.delay)
        m_engine.setAnfDelay(*settings.delay);
    if (settings.rate)
        m_engine.setAnfRate(*settings.rate);
    if (settings.leak)
        m_engine.setAnfLeak(*settings.leak);
    m_engine.setAnf(kReceiver, settings.on);
}

void ToolSetup::setUpEffects(const ToolSettings &settings)
{
    if (settings.cwToneHz)
        m_engine.setCwTone(*settings.cwToneHz);
    m_engine.setApf(kReceiver, settings.apf);
    m_engine.setDse(kReceiver, settings.dse);
    m_engine.setBin(kReceiver, settings.binaural);
    m_engine.setEqualizerGains(kReceiver, settings.equalizerDb); // none: left alone
    m_engine.setEqualizerEnable(kReceiver, !settings.equalizerDb.isEmpty());
    m_engine.setWfmStereo(kReceiver, !settings.mono);
}

void ToolSetup::setUpSquelch(const ToolSettings &settings)
{
    for (const unsigned channel : {kChannelA, kChannelB}) {
        if (settings.squelchDbm)
            m_engine.setSqlValue(kReceiver, channel, *settings.squelchDbm);
        m_engine.setSqlEnable(kReceiver, channel, settings.squelchDbm.has_value());
    }
    if (settings.ctcssIndex)
        m_engine.setToneCTCSS(kReceiver, *settings.ctcssIndex);
    m_engine.setEnableCTCSS(kReceiver, settings.ctcssIndex.has_value());
}

void ToolSetup::setUpChannels(const ToolSettings &settings, double centerHz)
{
    m_engine.setMainVolume(settings.volumeDb);
    if (settings.tuneBHz)
        m_engine.setDownConverter(kChannelB, *settings.tuneBHz - centerHz);
    m_engine.setVolume(kReceiver, kChannelB, settings.volumeBDb);
    for (const unsigned channel : {kChannelA, kChannelB})
        m_engine.setBalance(kReceiver, channel, settings.balanceDb);
    m_engine.setChannelEnable(kReceiver, kChannelB, settings.tuneBHz.has_value());
}

void ToolSetup::begin(const ToolSettings &settings)
{
    const auto mode = settings.agcMode;
    if (settings.agcGainDb)
        m_engine.setAgcGain(kChannelA, *settings.agcGainDb);
    if (settings.agcAttackMs)
        m_engine.setAgcAttack(mode, *settings.agcAttackMs);
    if (settings.agcDecayMs)
        m_engine.setAgcDecay(mode, *settings.agcDecayMs);
    if (settings.agcHangMs)
        m_engine.setAgcHangTime(mode, *settings.agcHangMs);
    // A new engine calls its mode Off while its receiver's control is on, and takes Off for nothing
    // new. Of several changes only the last one is heard.
    if (mode == DspCore::AgcMode::Off)
        m_engine.setAgcMode(DspCore::AgcMode::Med);
    m_engine.setAgcMode(mode);
}
} // namespace host
