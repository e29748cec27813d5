// SPDX-License-Identifier: GPL-3.0-or-later
// The setters of ZephrinMDSP that pass a setting of a demodulator or noise tool on under the mutex.
#include "Dsp/ZephrinMDSP.h"

void ZephrinMDSP::setAgcGain(unsigned int channel, int gain)
{
    Lock lock(m_mutex);
    m_receiver.setAgcGain(channel, gain);
}

void ZephrinMDSP::setCwTone(int tone)
{
    Lock lock(m_mutex);
    m_receiver.setCwTone(tone);
}

void ZephrinMDSP::setNb1(unsigned int, bool state)
{
    Lock lock(m_mutex);
    m_noiseBlanker.setEnableNb1(state);
}

void ZephrinMDSP::setNb2(unsigned int, bool state)
{
    Lock lock(m_mutex);
    m_noiseBlanker.setEnableNb2(state);
}

void ZephrinMDSP::setNb1Threshold(double threshold)
{
    Lock lock(m_mutex);
    m_noiseBlanker.setThresholdNb1(threshold);
}

void ZephrinMDSP::setNb2Threshold(double threshold)
{
    Lock lock(m_mutex);
    m_noiseBlanker.setThresholdNb2(threshold);
}

void ZephrinMDSP::setNr(unsigned int, bool state)
{
    Lock lock(m_mutex);
    m_receiver.setNr(state);
}

void ZephrinMDSP::setNrTaps(int taps)
{
    Lock lock(m_mutex);
    m_receiver.setNrTaps(taps);
}

void ZephrinMDSP::setNrDelay(int samples)
{
    Lock lock(m_mutex);
    m_receiver.setNrDelay(samples);
}

void ZephrinMDSP::setNrRate(double rate)
{
    Lock lock(m_mutex);
    m_receiver.setNrRate(rate);
}

void ZephrinMDSP::setNrLeak(double leak)
{
    Lock lock(m_mutex);
    m_receiver.setNrLeak(leak);
}

void ZephrinMDSP::setAnf(unsigned int, bool state)
{
    Lock lock(m_mutex);
    m_receiver.setAnf(state);
}

void ZephrinMDSP::setAnfTaps(int taps)
{
    Lock lock(m_mutex);
    m_receiver.setAnfTaps(taps);
}

void ZephrinMDSP::setAnfDelay(int samples)
{
    Lock lock(m_mutex);
    m_receiver.setAnfDelay(samples);
}

void ZephrinMDSP::setAnfRate(double rate)
{
    Lock lock(m_mutex);
    m_receiver.setAnfRate(rate);
}

void ZephrinMDSP::setAnfLeak(double leak)
{
    Lock lock(m_mutex);
    m_receiver.setAnfLeak(leak);
}

void ZephrinMDSP::setApf(quint32, bool state)
{
    Lock lock(m_mutex);
    m_receiver.setApf(state);
}

void ZephrinMDSP::setCwApfGain(int gain)
{
    Lock lock(m_mutex);
    m_receiver.setCwApfGain(gain);
}

void ZephrinMDSP::setCwApfQuality(int quality)
{
    Lock lock(m_mutex);
    m_receiver.setCwApfQuality(quality);
}

void ZephrinMDSP::setSsbApfGain(int gain)
{
    Lock lock(m_mutex);
    m_receiver.setSsbApfGain(gain);
}

void ZephrinMDSP::setSsbApfQuality(double quality)
{
    Lock lock(m_mutex);
    m_receiver.setSsbApfQuality(quality);
}

void ZephrinMDSP::setSsbApfFreq(int frequency)
{
    Lock lock(m_mutex);
    m_receiver.setSsbApfFreq(frequency);
}

void ZephrinMDSP::setDse(quint32, bool state)
{
    Lock lock(m_mutex);
    m_receiver.setDse(state);
}

void ZephrinMDSP::setDseQuality(int taps)
{
    Lock lock(m_mutex);
    m_receiver.setDseQuality(taps);
}

void ZephrinMDSP::setDseSwap(bool swap)
{
    Lock lock(m_mutex);
    m_receiver.setDseSwap(swap);
}

void ZephrinMDSP::setBin(unsigned int, bool state)
{
    Lock lock(m_mutex);
    m_receiver.setBin(state);
}

void ZephrinMDSP::setEqualizerEnable(unsigned int, bool state)
{
    Lock lock(m_mutex);
    m_receiver.setEqualizerEnable(state);
}

void ZephrinMDSP::setEqualizerGains(unsigned int, const QVector<int> &gains)
{
    Lock lock(m_mutex);
    m_receiver.setEqualizerGains(gains);
}

void ZephrinMDSP::setSqlEnable(unsigned int, unsigned int channel, bool state)
{
    Lock lock(m_mutex);
    m_receiver.setSqlEnable(channel, state);
}

void ZephrinMDSP::setSqlValue(unsigned int, unsigned int channel, int threshold)
{
    Lock lock(m_mutex);
    m_receiver.setSqlValue(channel, threshold);
}

void ZephrinMDSP::setEnableCTCSS(int, bool state)
{
    Lock lock(m_mutex);
    m_receiver.setEnableCTCSS(state);
}

void ZephrinMDSP::setToneCTCSS(int, int index)
{
    Lock lock(m_mutex);
    m_receiver.setToneCTCSS(index);
}

void ZephrinMDSP::setWfmStereo(unsigned int, bool state)
{
    Lock lock(m_mutex);
    m_receiver.setWfmStereo(state);
}

void ZephrinMDSP::setWfmUsa(bool usa)
{
    Lock lock(m_mutex);
    m_receiver.setWfmUsa(usa);
}
