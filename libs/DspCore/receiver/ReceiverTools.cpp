// SPDX-License-Identifier: GPL-3.0-or-later
// Set-up and setters of the demodulators, noise tools and squelches of Receiver.
#include "DspCore/receiver/Receiver.h"

#include <algorithm>

namespace
{
constexpr int kAnfTaps = 60;
constexpr int kAnfDelay = 64; // samples
constexpr double kAnfRate = 0.0007;
constexpr double kAnfLeak = 1e-05;
constexpr int kNrTaps = 45;
constexpr int kNrDelay = 45; // samples
constexpr double kNrRate = 1e-05;
constexpr double kNrLeak = 0.0001;
constexpr int kDseTaps = 200;
constexpr double kOpenSquelch = -120.0; // dBm
} // namespace

namespace DspCore
{
void Receiver::setUpTools()
{
    setNrTaps(kNrTaps);
    setNrDelay(kNrDelay);
    setNrRate(kNrRate);
    setNrLeak(kNrLeak);
    setAnfTaps(kAnfTaps);
    setAnfDelay(kAnfDelay);
    setAnfRate(kAnfRate);
    setAnfLeak(kAnfLeak);
    setDseQuality(kDseTaps);
    setUpSsbApf();
    setUpCwApf();
    setAgcTimes(mAgcParam);
    setToolRates();
    for (ReceiverChannel &channel : mChannels) {
        channel.cw.setFrequency(mCwApf.frequency);
        channel.dse.setPitch(mCwApf.frequency);
        channel.sql.setThreshold(kOpenSquelch);
        channel.sqlCtcss.setThreshold(kOpenSquelch);
        // 10 ms in samples, counted once: a later rate leaves the delay as it is.
        channel.binaural.setDelaySamples(std::size_t(mOutputRate / 100.0));
    }
}

/// The tone squelch keeps the rate that it was built with.
void Receiver::setToolRates()
{
    for (ReceiverChannel &channel : mChannels) {
        channel.agc.setSampleRate(mOutputRate);
        channel.cw.setSampleRate(mOutputRate);
        channel.am.setSampleRate(mOutputRate);
        channel.sam.setSampleRate(mOutputRate);
        channel.nfm.setSampleRate(mOutputRate);
        channel.equalizer.setSampleRate(mOutputRate);
        channel.dse.setSampleRate(mOutputRate);
    }
}

void Receiver::setUpSsbApf()
{
    for (ReceiverChannel &channel : mChannels)
        channel.ssbApf.init(mSsbApf.frequency / mOutputRate, mSsbApf.quality, mSsbApf.gainDb);
}

void Receiver::setUpCwApf()
{
    for (ReceiverChannel &channel : mChannels)
        channel.cwApf.init(mCwApf.frequency / mOutputRate, mCwApf.quality, mCwApf.gainDb);
}

void Receiver::setCwTone(int tone)
{
    mCwApf.frequency = tone;
    setUpCwApf();
    for (ReceiverChannel &channel : mChannels) {
        channel.cw.setFrequency(tone);
        channel.dse.setPitch(tone);
    }
}

void Receiver::setApf(bool enable)
{
    for (ReceiverChannel &channel : mChannels) {
        channel.ssbApf.setEnable(enable);
        channel.cwApf.setEnable(enable);
    }
}

void Receiver::setSsbApfGain(int gainDb)
{
    mSsbApf.gainDb = gainDb;
    setUpSsbApf();
}

void Receiver::setSsbApfQuality(double quality)
{
    mSsbApf.quality = quality;
    setUpSsbApf();
}

void Receiver::setSsbApfFreq(int frequency)
{
    mSsbApf.frequency = frequency;
    setUpSsbApf();
}

void Receiver::setCwApfGain(int gainDb)
{
    mCwApf.gainDb = gainDb;
    setUpCwApf();
}

void Receiver::setCwApfQuality(int quality)
{
    mCwApf.quality = quality;
    setUpCwApf();
}

void Receiver::setBin(bool enable)
{
    mBin = enable;
    for (ReceiverChannel &channel : mChannels)
        channel.binaural.setOn(enable);
}

void Receiver::setNr(bool enable)
{
    for (ReceiverChannel &channel : mChannels)
        channel.nr.setEnable(enable);
}

void Receiver::setNrTaps(int taps)
{
    for (ReceiverChannel &channel : mChannels)
        channel.nr.setTaps(taps);
}

void Receiver::setNrDelay(int samples)
{
    for (ReceiverChannel &channel : mChannels)
        channel.nr.setDelay(samples);
}

void Receiver::setNrRate(double rate)
{
    for (ReceiverChannel &channel : mChannels)
        channel.nr.setRate(rate);
}

void Receiver::setNrLeak(double leak)
{
    for (ReceiverChannel &channel : mChannels)
        channel.nr.setLeak(leak);
}

void Receiver::setAnf(bool enable)
{
    for (ReceiverChannel &channel : mChannels)
        channel.anf.setEnable(enable);
}

void Receiver::setAnfTaps(int taps)
{
    for (ReceiverChannel &channel : mChannels)
        channel.anf.setTaps(taps);
}

void Receiver::setAnfDelay(int samples)
{
    for (ReceiverChannel &channel : mChannels)
        channel.anf.setDelay(samples);
}

void Receiver::setAnfRate(double rate)
{
    for (ReceiverChannel &channel : mChannels)
        channel.anf.setRate(rate);
}

void Receiver::setAnfLeak(double leak)
{
    for (ReceiverChannel &channel : mChannels)
        channel.anf.setLeak(leak);
}

void Receiver::setDse(bool enable)
{
    for (ReceiverChannel &channel : mChannels)
        channel.dse.setEnable(enable);
}

void Receiver::setDseQuality(int taps)
{
    for (ReceiverChannel &channel : mChannels)
        channel.dse.setTaps(taps);
}

void Receiver::setDseSwap(bool swap)
{
    for (ReceiverChannel &channel : mChannels)
        channel.dse.setSwap(swap);
}

void Receiver::setEqualizerEnable(bool enable)
{
    for (ReceiverChannel &channel : mChannels)
        channel.equalizer.setEnable(enable);
}

void Receiver::setEqualizerGains(const QVector<int> &gains)
{
    for (ReceiverChannel &channel : mChannels)
        channel.equalizer.init(gains);
}

void Receiver::setSqlEnable(unsigned int channel, bool enable)
{
    if (!exists(channel))
        return;
    mChannels[channel].sql.setEnable(enable);
    mChannels[channel].sqlCtcss.setEnableSql(enable);
}

void Receiver::setSqlValue(unsigned int channel, int threshold)
{
    if (!exists(channel))
        return;
    mChannels[channel].sql.setThreshold(threshold);
    mChannels[channel].sqlCtcss.setThreshold(threshold);
}

void Receiver::setEnableCTCSS(bool enable)
{
    for (ReceiverChannel &channel : mChannels)
        channel.sqlCtcss.setEnable(enable);
}

void Receiver::setToneCTCSS(int index)
{
    for (ReceiverChannel &channel : mChannels)
        channel.sqlCtcss.setTone(std::max(index, 0));
}

void Receiver::setWfmStereo(bool stereo)
{
    mWideFm.setStereo(stereo);
}

void Receiver::setWfmUsa(bool usa)
{
    mWideFm.setUsaRegion(usa);
}
} // namespace DspCore
