// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/FilterTapsClass.h"
#include "Dsp/ZephrinMDSP.h"

#include <algorithm>

namespace
{
constexpr int kMinFilterTaps = 200;
constexpr int kMaxFilterTaps = 8000;
} // namespace

void ZephrinMDSP::setSensors(SensorsAbstract *sensors)
{
    Lock lock(m_mutex);
    m_sensors = sensors;
}

void ZephrinMDSP::setSampleRate(double rate)
{
    Lock lock(m_mutex);
    const bool changes = !qFuzzyCompare(rate, m_receiver.inputSampleRate());
    m_sampleRate = rate;
    m_receiver.setInputSampleRate(rate);
    if (changes)
        tuneReceiver();
    m_notches.at(0)->setSampleRate(rate);
}

// A new rate leaves the receiver at the middle of the band, and its wide filter with edges that
// count in samples of the rate before.
void ZephrinMDSP::tuneReceiver()
{
    for (unsigned channel = 0; channel < m_downConverter.size(); ++channel)
        m_receiver.setDownConverter(channel, m_downConverter[channel]);
    if (m_bandEdges)
        m_receiver.setBandFilterIf(0, m_bandEdges->low, m_bandEdges->high);
}

void ZephrinMDSP::setSampleRateSC(double rate)
{
    Lock lock(m_mutex);
    m_soundCardRate = rate;
    m_receiver.setOutputSampleRate(rate);
    m_lineOut.setSampleRates(rate, m_lineOutRate);
}

void ZephrinMDSP::setDds(unsigned int receiver, double hz)
{
    m_dds.at(receiver) = hz;
    m_notches.at(receiver)->setDds(hz);
}

void ZephrinMDSP::setModulation(unsigned int, DspCore::Modulation modulation)
{
    Lock lock(m_mutex);
    m_modulation = modulation;
    m_receiver.setModulation(modulation);
    m_receiver.setFilterTaps(m_filterTaps[filterTapsClass(modulation)]);
}

void ZephrinMDSP::setFilterTaps(std::size_t tapsClass, int taps, bool apply)
{
    m_filterTaps[tapsClass] = std::clamp(taps, kMinFilterTaps, kMaxFilterTaps);
    if (apply)
        m_receiver.setFilterTaps(m_filterTaps[tapsClass]);
}

void ZephrinMDSP::setSsbFilterTaps(int taps)
{
    Lock lock(m_mutex);
    setFilterTaps(kSsbTaps, taps, filterTapsClass(m_modulation) == kSsbTaps);
}

void ZephrinMDSP::setAmFilterTaps(int taps)
{
    Lock lock(m_mutex);
    setFilterTaps(kAmTaps, taps, true);
}

void ZephrinMDSP::setDigFilterTaps(int taps)
{
    Lock lock(m_mutex);
    setFilterTaps(kDigTaps, taps, filterTapsClass(m_modulation) == kDigTaps);
}

void ZephrinMDSP::setCwFilterTaps(int taps)
{
    Lock lock(m_mutex);
    setFilterTaps(kCwTaps, taps, filterTapsClass(m_modulation) == kCwTaps);
}

void ZephrinMDSP::setAgcMode(AgcMode mode)
{
    if (mode == m_agc.mode())
        return;
    Lock lock(m_mutex);
    applyAgc(m_agc.setMode(mode));
}

void ZephrinMDSP::setAgcAttack(AgcMode mode, REAL ms)
{
    setAgcTime(mode, &AgcParam::attack, ms);
}

void ZephrinMDSP::setAgcDecay(AgcMode mode, REAL ms)
{
    setAgcTime(mode, &AgcParam::decay, ms);
}

void ZephrinMDSP::setAgcHangTime(AgcMode mode, REAL ms)
{
    setAgcTime(mode, &AgcParam::hangTime, ms);
}

void ZephrinMDSP::setAgcTime(AgcMode mode, double AgcParam::*field, double ms)
{
    Lock lock(m_mutex);
    if (const auto setting = m_agc.setTime(mode, field, ms))
        applyAgc(*setting);
}

void ZephrinMDSP::applyAgc(const AgcTable::Setting &setting)
{
    const AgcParam &times = setting.times;
    m_receiver.setAgcParam(setting.on, times.attack, times.decay, times.hangTime);
}

void ZephrinMDSP::setDownConverter(unsigned int channel, double hz)
{
    Lock lock(m_mutex);
    if (channel < m_downConverter.size())
        m_downConverter[channel] = hz;
    m_receiver.setDownConverter(channel, hz);
}

void ZephrinMDSP::setBandFilterIf(unsigned int channel, double low, double high)
{
    Lock lock(m_mutex);
    m_bandEdges = {low, high};
    m_receiver.setBandFilterIf(channel, low, high);
}

void ZephrinMDSP::setRit(unsigned int, unsigned int channel, double hz)
{
    Lock lock(m_mutex);
    m_receiver.setRit(channel, hz);
}

void ZephrinMDSP::setChannelEnable(unsigned int, unsigned int, bool state)
{
    Lock lock(m_mutex);
    m_receiver.setEnableVfob(state);
}

void ZephrinMDSP::setMainVolume(double level)
{
    Lock lock(m_mutex);
    m_receiver.setMainVolume(level);
}

void ZephrinMDSP::setVolume(unsigned int, unsigned int channel, double level)
{
    Lock lock(m_mutex);
    m_receiver.setVolume(channel, level);
}

void ZephrinMDSP::setBalance(unsigned int, unsigned int channel, double balance)
{
    Lock lock(m_mutex);
    m_receiver.setBalance(channel, balance);
}

void ZephrinMDSP::setMainMute(bool state)
{
    Lock lock(m_mutex);
    m_receiver.setMainMute(state);
}

void ZephrinMDSP::setMute(unsigned int, unsigned int channel, bool state)
{
    Lock lock(m_mutex);
    m_receiver.setMute(channel, state);
}

void ZephrinMDSP::setDiglOffset(int offset)
{
    Lock lock(m_mutex);
    m_receiver.setDiglOffset(offset);
}

void ZephrinMDSP::setDiguOffset(int offset)
{
    Lock lock(m_mutex);
    m_receiver.setDiguOffset(offset);
}
