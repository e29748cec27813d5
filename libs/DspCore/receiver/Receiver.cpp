// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/Receiver.h"

#include "signal_primitives/ipps.h"

#include <cassert>
#include <cmath>

namespace
{
constexpr double kFixedGain = 0.7; // linear, of each channel before the volume controls
constexpr double kVolumeFadeMs = 50.0;
constexpr double kMinMainVolume = -60.0; // dB
} // namespace

namespace DspCore
{
Receiver::Receiver(QObject *parent) : QObject(parent)
{
    setUpVolumeRamp();
    mWideFm.setRates(mInputRate, mOutputRate);
    setUpWideBand();
}

void Receiver::setRepairs(const ReceiverRepairs &repairs)
{
    mHoldsAgc = repairs.agc;
    mWideFm.setRegional(repairs.wfm);
    mIsShort = repairs.fade;
    mSwitcher.setShort(repairs.fade);
    both(&ReceiverChannel::setRepairs, repairs);
}

void Receiver::process(COMPLEX *buffer, int len)
{
    assert(len <= SIGNAL_MAX_SIZE);
    if (buffer == nullptr || len < 1)
        return;

    mHeard = true;
    mInputMeter.process(buffer, len);
    const Modulation modulation = mSwitcher.modulation(); // of the whole block
    if (mSwitcher.takeClear())
        clearInFade();
    if (modulation == Modulation::WFM) {
        a().process(buffer, len, mWideFm);
        b().skip(len);
    } else {
        for (ReceiverChannel &channel : mChannels)
            channel.process(buffer, len, modulation);
    }
    runTail();
}

void Receiver::setModulation(Modulation modulation)
{
    if (modulation == Modulation::WFM)
        designWideBand(); // the clear in its fade comes before the first sample
    if (canPass(modulation))
        mSwitcher.setModulation(modulation, int(a().agc.lookAhead()) - 1);
    else
        mSwitcher.setModulation(modulation);
}

/// Whether the audio of the present mode may go on until the look-ahead has given it all.
bool Receiver::canPass(Modulation modulation) const
{
    const auto isLevelled = [](Modulation mode) {
        return mode != Modulation::NFM && mode != Modulation::WFM;
    };
    const ReceiverChannel &channel = mChannels[0];
    return mIsShort && mSwitcher.isSteady() && isLevelled(modulation)
        && isLevelled(mSwitcher.modulation()) && channel.agc.on() && !channel.bin()
        && channel.agc.lookAhead() > unsigned(ModulationSwitcher::kShortSamples);
}

void Receiver::clearInFade()
{
    if (mSwitcher.isPassing())
        return both(&ReceiverChannel::clearToLookAhead);
    applyNewestAgc();
    if (mIsShort && !mSwitcher.isModeChange())
        return;
    mWideFm.clear();
    both(&ReceiverChannel::clear);
    both(&ReceiverChannel::sqlCtcss, &SqlCtcss::clear);
}

/// Only the newest counts, as it does when someone turns a knob through many values.
void Receiver::applyNewestAgc()
{
    if (mAgcQueue.empty())
        return;
    both(&ReceiverChannel::agc, &Velmora::CppDsp::Vm_Agc<REAL>::setOn, mAgcQueue.back().on);
    both(&ReceiverChannel::setAgcTimes, mAgcQueue.back());
    mAgcQueue.clear();
}

void Receiver::runTail()
{
    mSwitcher.process(a().audio(), b().audio(), a().length());
    mLineOut.write(a().audio(), a().length());
    applyFixedGain();
    applyMainVolume();
    if (mChannelBInUse)
        addChannelB();
    mClipper.process(a().audio(), unsigned(a().length()));
    if (mSoundCardCallback)
        mSoundCardCallback(gsl::span<COMPLEX>(a().audio(), std::size_t(a().length())));
    mBuffer.write(a().audio(), a().length());
    readMeters();
}

void Receiver::applyFixedGain()
{
    for (ReceiverChannel &channel : mChannels) {
        if (channel.length() > 0)
            ippsMulC_64f_I(kFixedGain, &channel.audio()->re, 2 * channel.length());
    }
}

void Receiver::applyMainVolume()
{
    COMPLEX *left = a().audio();
    COMPLEX *right = b().audio();
    mMainVolume.run(mMainMute, a().length(), [left, right](int i, double gain) {
        left[i].re *= gain;
        left[i].im *= gain;
        right[i].re *= gain;
        right[i].im *= gain;
    });
}

/// A's length rules both: in wide FM channel B adds what its array still holds.
void Receiver::addChannelB()
{
    const int length = a().length();
    a().gain.process(a().audio(), length);
    b().gain.process(b().audio(), length);
    if (length > 0)
        ippsAdd_64fc_I(b().audio(), a().audio(), length);
}

void Receiver::readMeters()
{
    mAdcRe = mInputMeter.adcRe();
    mAdcIm = mInputMeter.adcIm();
    both(&ReceiverChannel::readLevel);
    mWfmStereoSeen = mWideFm.isStereo();
}

void Receiver::clear()
{
    mWideFm.clear();
    both(&ReceiverChannel::clear);
    mSwitcher.clear();
    mHeard = false;
    if (mHoldsAgc)
        applyNewestAgc(); // the fade that it waited for is over
}

void Receiver::setInputSampleRate(double rate)
{
    if (qFuzzyCompare(rate, mInputRate))
        return;
    mInputRate = rate;
    mMainVolume.setCurrent(0.0f);
    both(&ReceiverChannel::setInputRate, rate);
    mWideFm.setInputRate(rate, mOutputRate);
    clear();
    mBuffer.clear();
}

void Receiver::setOutputSampleRate(double rate)
{
    if (qFuzzyCompare(rate, mOutputRate))
        return;
    mOutputRate = rate;
    setUpVolumeRamp();
    // The times are samples at the new rate from here on; the switch waits for its fade.
    both(&ReceiverChannel::setAgcTimes, mAgcParam);
    both(&ReceiverChannel::setOutputRate, rate);
    mWideFm.setRates(mInputRate, rate);
    clear();
}

void Receiver::setUpVolumeRamp()
{
    const auto pole = float(std::exp(-1000.0 / (mOutputRate * kVolumeFadeMs)));
    mMainVolume.setPole(pole, 1.0f - pole);
}

void Receiver::setRit(unsigned int channel, double frequency)
{
    if (channel == 0)
        a().setRit(frequency);
}

void Receiver::setBandFilterIf(unsigned int, double low, double high)
{
    mBandLow = low;
    mBandHigh = high;
    both(&ReceiverChannel::setBand, low, high);
    setUpWideBand();
}

void Receiver::setUpWideBand()
{
    mWideBand = WideBand{mBandLow / mInputRate, mBandHigh / mInputRate, mFilterTaps};
    if (mSwitcher.modulation() == Modulation::WFM || mSwitcher.requested() == Modulation::WFM)
        designWideBand();
}

void Receiver::designWideBand()
{
    if (const auto band = std::exchange(mWideBand, std::nullopt))
        mWideFm.setBand(band->low, band->high, band->taps);
}

void Receiver::setFilterTaps(int taps)
{
    if (taps == mFilterTaps)
        return;
    mFilterTaps = taps;
    both(&ReceiverChannel::setFilterTaps, taps);
}

void Receiver::setAgcParam(bool on, double attack, double decay, double hang)
{
    mAgcParam = {attack, decay, quint32(hang), on};
    mAgcQueue.push_back(mAgcParam);
    if (mHoldsAgc && !mHeard)
        applyNewestAgc();
    else
        mSwitcher.setAgcParam();
}

void Receiver::setMainVolume(double db)
{
    mMainVolume.setTarget(volumeGain(std::clamp(db, kMinMainVolume, 0.0)));
}

void Receiver::getAdc(unsigned int, double &re, double &im) const
{
    re = mAdcRe;
    im = mAdcIm;
}

void Receiver::getDbm(unsigned int, double &a, double &b) const
{
    a = mChannels[0].level();
    b = mChannels[1].level();
}
} // namespace DspCore
