// SPDX-License-Identifier: GPL-3.0-or-later
// The setters of Receiver for rates, tuning, fades and volume. Those of the demodulators and noise
// tools stand in ReceiverTools.cpp, the chain itself in Receiver.cpp.
#include "DspCore/receiver/Receiver.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
constexpr double kNoLevel = -120.0; // dBm, floor of the level displays
constexpr double kVolumeFadeMs = 50.0;
constexpr double kMinMainVolume = -60.0;    // dB
constexpr double kDrmShift = -5000.0;       // Hz
constexpr double kPreFilterMargin = 3000.0; // Hz kept free below half the output rate
constexpr int kPreFilterTaps = 500;

/// Input rates whose way down to 48 kHz and to 192 kHz is given as a ratio of integers.
struct FixedRatio
{
    int inputRate; // Hz
    int up;
    int down;
    int wideUp;
    int wideDown;
};
constexpr FixedRatio kFixedRatios[] = {{2560000, 3, 160, 3, 40}, {1920000, 1, 40, 1, 10}};
static_assert(2560000 / 160 * 3 == 48000 && 2560000 / 40 * 3 == 192000);
static_assert(1920000 / 40 == 48000 && 1920000 / 10 == 192000);

const FixedRatio *fixedRatio(double inputRate)
{
    const auto *row = std::ranges::find(kFixedRatios, int(inputRate), &FixedRatio::inputRate);
    return row == std::end(kFixedRatios) ? nullptr : row;
}

/// Going up in rate the decimator makes more samples than it takes, and they must fit the output
/// array. Counted with the ratio as the decimator rounds it.
int longestInput(double inputRate, double outputRate)
{
    int up = 0;
    int down = 0;
    DspCore::Resampler::gdc(inputRate, outputRate, up, down);
    return up > down ? int(SIGNAL_MAX_SIZE * (long long)down / up) : SIGNAL_MAX_SIZE;
}
} // namespace

namespace DspCore
{
void Receiver::setInputSampleRate(double rate)
{
    if (qFuzzyCompare(rate, mInputRate))
        return;
    mInputRate = rate;
    mMainVolume.setCurrent(0.0f);
    for (ReceiverChannel &channel : mChannels)
        channel.oscillator.setOsc(0.0); // an offset of the old panorama: the caller tunes anew
    a().oscillator.setRit(mRit / rate);
    b().oscillator.setRit(0.0);

    if (const FixedRatio *ratio = fixedRatio(rate)) {
        for (ReceiverChannel &channel : mChannels)
            channel.decimator.init(ratio->up, ratio->down);
        mLongestInput = SIGNAL_MAX_SIZE;
        mWideFm.setRatio(ratio->wideUp, ratio->wideDown, mOutputRate);
    } else {
        setUpRates();
    }
    setUpPreFilters();
    clear();
    mBuffer.clear();
}

void Receiver::setOutputSampleRate(double rate)
{
    if (qFuzzyCompare(rate, mOutputRate))
        return;
    mOutputRate = rate;
    setUpVolumeRamp();
    setUpBandFilters();
    // The times are samples at the new rate from here on; the switch waits for its fade.
    setAgcTimes(mAgcParam);
    setToolRates();
    setUpRates();
    setUpPreFilters();
    setUpMixers();
    setUpSsbApf();
    setUpCwApf();
    clear();
}

void Receiver::setUpVolumeRamp()
{
    const auto pole = float(std::exp(-1000.0 / (mOutputRate * kVolumeFadeMs)));
    mMainVolume.setPole(pole, 1.0f - pole);
}

void Receiver::setUpRates()
{
    for (ReceiverChannel &channel : mChannels)
        channel.decimator.setSampleRates(mInputRate, mOutputRate);
    mLongestInput = longestInput(mInputRate, mOutputRate);
    mWideFm.setRates(mInputRate, mOutputRate);
}

void Receiver::setUpPreFilters()
{
    const double edge = (mOutputRate * 0.5 - kPreFilterMargin) / mInputRate;
    for (ReceiverChannel &channel : mChannels)
        channel.preFilter.init(-edge, edge, kPreFilterTaps);
}

void Receiver::setUpBandFilters()
{
    for (ReceiverChannel &channel : mChannels)
        channel.bandFilter.init(mBandLow / mOutputRate, mBandHigh / mOutputRate, mFilterTaps);
}

void Receiver::setUpWideBandFilter()
{
    mWideFm.setBand(mBandLow / mInputRate, mBandHigh / mInputRate, mFilterTaps);
}

void Receiver::setUpMixers()
{
    for (ReceiverChannel &channel : mChannels) {
        channel.diglMixer.setOsc(mDiglOffset / mOutputRate);
        channel.diguMixer.setOsc(-mDiguOffset / mOutputRate);
    }
    mDrmMixer.setOsc(kDrmShift / mOutputRate);
}

void Receiver::setDownConverter(unsigned int channel, double frequency)
{
    if (exists(channel))
        mChannels[channel].oscillator.setOsc(frequency / mInputRate);
}

double Receiver::downConverter(unsigned int) const
{
    return 0.0;
}

void Receiver::setRit(unsigned int channel, double frequency)
{
    if (channel != 0)
        return;
    mRit = frequency;
    a().oscillator.setRit(frequency / mInputRate);
}

void Receiver::setBandFilterIf(unsigned int, double low, double high)
{
    mBandLow = low;
    mBandHigh = high;
    setUpBandFilters();
    setUpWideBandFilter();
    const double cutoff = std::max(std::abs(low), std::abs(high));
    for (ReceiverChannel &channel : mChannels) {
        channel.am.setFilterFc(cutoff);
        channel.sam.setFilterFc(cutoff);
    }
}

void Receiver::setFilterTaps(int taps)
{
    if (taps == mFilterTaps)
        return;
    mFilterTaps = taps;
    setUpBandFilters();
}

void Receiver::setModulation(Modulation modulation)
{
    mSwitcher.setModulation(modulation);
}

void Receiver::setAgcParam(bool on, double attack, double decay, double hang)
{
    mAgcParam = {attack, decay, quint32(hang), on};
    mAgcQueue.push_back(mAgcParam);
    mSwitcher.setAgcParam();
}

void Receiver::setAgcTimes(const AgcParam &param)
{
    for (ReceiverChannel &channel : mChannels) {
        channel.agc.setAttack(param.attack);
        channel.agc.setDecay(param.decay);
        channel.agc.setHang(param.hang);
    }
}

void Receiver::setAgcGain(unsigned int, int gain)
{
    for (ReceiverChannel &channel : mChannels) {
        channel.agc.setMaximumGain(gain);
        channel.agc.setFixedGain(gain);
    }
}

void Receiver::setDiglOffset(int offset)
{
    mDiglOffset = offset;
    setUpMixers();
}

void Receiver::setDiguOffset(int offset)
{
    mDiguOffset = offset;
    setUpMixers();
}

void Receiver::setMainVolume(double db)
{
    mMainVolume.setTarget(volumeGain(std::clamp(db, kMinMainVolume, 0.0)));
}

void Receiver::setVolume(unsigned int channel, double db)
{
    if (exists(channel))
        mChannels[channel].gain.setVolume(db);
}

void Receiver::setBalance(unsigned int channel, double db)
{
    if (exists(channel))
        mChannels[channel].gain.setBalance(db);
}

void Receiver::setMainMute(bool mute)
{
    mMainMute = mute;
}

void Receiver::setMute(unsigned int channel, bool mute)
{
    if (exists(channel))
        mChannels[channel].gain.setMute(mute);
}

void Receiver::setEnableVfob(bool enable)
{
    mChannelBInUse = enable;
}

void Receiver::setSoundCardCallback(SoundCardCallback callback)
{
    mSoundCardCallback = std::move(callback);
}

double Receiver::signalLevel(Channel) const
{
    return kNoLevel;
}

void Receiver::getAdc(unsigned int, double &re, double &im) const
{
    re = mAdcRe;
    im = mAdcIm;
}

void Receiver::getDbm(unsigned int, double &a, double &b) const
{
    a = mChannels[0].level;
    b = mChannels[1].level;
}
} // namespace DspCore
