// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/ToolSetup.h"

#include "settings/SettingsStore.h"

#include "host_interfaces/DeviceAbstract.h"
#include "host_interfaces/DeviceManagerAbstract.h"

namespace host
{
namespace
{
constexpr unsigned kReceiver = 0;
constexpr unsigned kChannelA = 0;
constexpr unsigned kChannelB = 1;

template <typename Value>
void put(SettingsStore &store, const QString &key, const std::optional<Value> &value)
{
    if (value)
        store.overlay("ZephrinMOptions/" + key, *value);
}

void putPredictor(SettingsStore &store, const QString &name, const PredictorSettings &settings)
{
    put(store, name + "_taps", settings.taps);
    put(store, name + "_delay", settings.delay);
    put(store, name + "_rate", settings.rate);
    put(store, name + "_leak", settings.leak);
}
} // namespace

void ToolSetup::overlay(const ToolSettings &settings, SettingsStore &store)
{
    // The mode Off has no times, and none are given then.
    const QString agc = QString("agc_") + kAgcModeNames.at(std::size_t(settings.agcMode));
    put(store, agc + "_Attack", settings.agcAttackMs);
    put(store, agc + "_Decay", settings.agcDecayMs);
    put(store, agc + "_hangTime", settings.agcHangMs);
    put(store, "dsp_nb1_thr", settings.nb1Threshold);
    put(store, "dsp_nb2_thr", settings.nb2Threshold);
    putPredictor(store, "dsp_nr", settings.nr);
    putPredictor(store, "dsp_anf", settings.anf);
    put(store, "cw_pitch", settings.cwToneHz);
}

void ToolSetup::prepare(const ToolSettings &settings, double centerHz)
{
    m_device.setNb1(kReceiver, settings.nb1);
    m_device.setNb2(kReceiver, settings.nb2);
    m_device.setNr(kReceiver, settings.nr.on);
    m_device.setAnf(kReceiver, settings.anf.on);
    setUpEffects(settings);
    setUpSquelch(settings);
    setUpChannels(settings, centerHz);
}

void ToolSetup::setUpEffects(const ToolSettings &settings)
{
    emit m_manager.apfChanged(kReceiver, settings.apf);
    emit m_manager.dseChanged(kReceiver, settings.dse);
    m_device.setBin(kReceiver, settings.binaural);
    m_device.setEqualizerGains(kReceiver, settings.equalizerDb.toList()); // none: left alone
    m_device.setEqualizerEnable(kReceiver, !settings.equalizerDb.isEmpty());
    m_device.setWfmStereo(kReceiver, !settings.mono);
}

void ToolSetup::setUpSquelch(const ToolSettings &settings)
{
    for (const unsigned channel : {kChannelA, kChannelB}) {
        if (settings.squelchDbm)
            m_device.setSqlValue(kReceiver, channel, *settings.squelchDbm);
        m_device.setSqlEnable(kReceiver, channel, settings.squelchDbm.has_value());
    }
    if (settings.ctcssIndex)
        m_device.setToneCTCSS(kReceiver, *settings.ctcssIndex);
    m_device.setEnableCTCSS(kReceiver, settings.ctcssIndex.has_value());
}

void ToolSetup::setUpChannels(const ToolSettings &settings, double centerHz)
{
    m_device.setMainVolume(settings.volumeDb);
    if (settings.tuneBHz)
        m_device.setDownConverter(kReceiver, kChannelB, *settings.tuneBHz - centerHz);
    m_device.setVolume(kReceiver, kChannelB, settings.volumeBDb);
    for (const unsigned channel : {kChannelA, kChannelB})
        m_device.setBalance(kReceiver, channel, settings.balanceDb);
    m_device.receiverChannelEnable(kReceiver, kChannelB, settings.tuneBHz.has_value());
}

void ToolSetup::begin(const ToolSettings &settings)
{
    const auto set = [this](DspCore::AgcMode mode) {
        m_device.setAgcMode(kReceiver, kChannelA, unsigned(mode));
    };
    if (settings.agcGainDb)
        m_device.setAgcGain(kReceiver, kChannelA, *settings.agcGainDb);
    // A new engine calls its mode Off while its receiver's control is on, and takes Off for nothing
    // new. Of several changes only the last one is heard.
    if (settings.agcMode == DspCore::AgcMode::Off)
        set(DspCore::AgcMode::Med);
    set(settings.agcMode);
}
} // namespace host
