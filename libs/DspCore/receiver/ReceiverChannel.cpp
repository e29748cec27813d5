// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/ReceiverChannel.h"

#include "DspCore/receiver/FixedRatio.h"
#include "DspCore/receiver/WideFm.h"
#include "signal_primitives/ipps.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
using DspCore::Modulation;

constexpr double kDrmShift = -5000.0;       // Hz
constexpr double kPreFilterMargin = 3000.0; // Hz kept free below half the output rate
constexpr int kPreFilterTaps = 500;

// First settings of the tools.
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

bool isDigital(Modulation modulation)
{
    return modulation == Modulation::DIGL || modulation == Modulation::DIGU
        || modulation == Modulation::DRM;
}

bool isFinite(const COMPLEX *samples, int length)
{
    bool isFinite = true;
    for (int n = 0; n < length; ++n)
        isFinite &= std::isfinite(samples[n].re) && std::isfinite(samples[n].im);
    return isFinite;
}

/// Going up in rate the decimator makes more samples than it takes, and they must fit the output
/// array.
int longestInput(int up, int down)
{
    return up > down ? int(SIGNAL_MAX_SIZE * (long long)down / up) : SIGNAL_MAX_SIZE;
}
} // namespace

namespace DspCore
{
ReceiverChannel::ReceiverChannel(Channel name, CircularBuffer<COMPLEX> *vac)
    : mName(name), mVac(vac)
{
    setUpDecimator();
    setUpBandFilter();
    setUpMixers();
    setUpSsbApf();
    setUpCwApf();
    nr.setTaps(kNrTaps);
    nr.setDelay(kNrDelay);
    nr.setRate(kNrRate);
    nr.setLeak(kNrLeak);
    anf.setTaps(kAnfTaps);
    anf.setDelay(kAnfDelay);
    anf.setRate(kAnfRate);
    anf.setLeak(kAnfLeak);
    dse.setTaps(kDseTaps);
    setAgcTimes({});
    setToolRates();
    setCwTone(mCwApfSetting.frequency);
    setSqlValue(kOpenSquelch);
    // 10 ms in samples, counted once: a later rate leaves the delay as it is.
    mBinaural.setDelaySamples(std::size_t(mOutputRate / 100.0));
}

void ReceiverChannel::setRepairs(const ReceiverRepairs &repairs)
{
    mMeter.setRestart(repairs.meter);
    mMeter.setByTime(repairs.pace);
    mKeepsFinite = repairs.numbers;
    mLevelsCable = repairs.cable;
    agc.setKeeps(repairs.fade);
    sqlCtcss.setExact(repairs.ctcss);
}

void ReceiverChannel::process(const COMPLEX *block, int length, Modulation modulation)
{
    mOscillator.process(block, mDecimator.room(length), length);
    mDecimator.process(std::min(length, mLongestInput), mOutput.data(), mLength);
    if (mLength == 0)
        return; // a block of a few input samples may give none at the output rate
    shiftDigital(modulation);
    mBandFilter.process(mOutput.data(), mLength);
    mMeter.process(mOutput.data(), mLength, mOutputRate);
    demodulate(modulation);
    if (!isDigital(modulation))
        cleanUp();
    if (mKeepsFinite && !isFinite(mOutput.data(), mLength))
        restart();
    const bool hasControl = modulation != Modulation::NFM;
    if (!mLevelsCable || !hasControl)
        feedCable();
    if (modulation == Modulation::LSB)
        swapParts();
    if (hasControl)
        controlLevel();
    finish(modulation);
}

void ReceiverChannel::process(const COMPLEX *block, int length, WideFm &wide)
{
    mOscillator.process(block, wide.room(length), length);
    mLength = wide.process(length, mMeter, mOutput.data());
    if (mLength > 0)
        equalizer.process(mOutput.data(), unsigned(mLength));
    if (mKeepsFinite && !isFinite(mOutput.data(), mLength)) {
        wide.restart();
        restart();
    }
    if (mLevelsCable)
        feedCable();
}

/// A loop or a recursive filter that has taken in what is no number gives nothing else any more.
/// The block is silence, and all that remembers begins anew.
void ReceiverChannel::restart()
{
    std::fill_n(mOutput.begin(), mLength, COMPLEX{0.0, 0.0});
    clear();
    mSam.restart();
    mNfm.restart();
    sqlCtcss.clear();
}

void ReceiverChannel::skip(int length)
{
    mOscillator.skip(length);
    mLength = 0;
}

void ReceiverChannel::shiftDigital(Modulation modulation)
{
    if (modulation == Modulation::DIGU)
        mDiguMixer.process(mOutput.data(), mLength);
    else if (modulation == Modulation::DIGL)
        mDiglMixer.process(mOutput.data(), mLength);
}

void ReceiverChannel::demodulate(Modulation modulation)
{
    COMPLEX *const signal = mOutput.data();
    switch (modulation) {
    case Modulation::AM:
        return mAm.process(signal, mLength);
    case Modulation::SAM:
        return mSam.process(signal, mLength);
    case Modulation::LSB:
    case Modulation::USB:
        return mSsbApf.process(signal, mLength);
    case Modulation::CW:
        mCw.process(signal, mLength);
        return mCwApf.process(signal, mLength);
    case Modulation::NFM:
        mNfm.process(signal, mLength);
        return sqlCtcss.process(signal, mLength, mLevel);
    case Modulation::DRM:
        if (mName == Channel::A)
            mDrmMixer.process(signal, mLength);
        return;
    default: // DSB and the mixed digital modes are what the band filter gives
        return;
    }
}

void ReceiverChannel::cleanUp()
{
    anf.process(mOutput.data(), mLength);
    nr.process(mOutput.data(), mLength);
    equalizer.process(mOutput.data(), unsigned(mLength));
}

/// Mirrors the spectrum, so that the lower sideband goes on as an upper one.
void ReceiverChannel::swapParts()
{
    for (int i = 0; i < mLength; ++i)
        std::swap(mOutput[i].re, mOutput[i].im);
}

void ReceiverChannel::feedCable()
{
    if (mVac)
        mVac->write(mOutput.data(), mLength);
}

/// The squelch knows the level of the last block only, so it opens and closes one block late.
void ReceiverChannel::controlLevel()
{
    agc.process(mOutput.data(), unsigned(mLength));
    if (mLevelsCable)
        feedCable();
    mSql.process(mOutput.data(), mLength, mLevel);
}

/// Digital modes hand out the complex signal. Binaural sideband modes and CW do so too, to the two
/// ears; the other modes are mono, and binaural delays one ear.
void ReceiverChannel::finish(Modulation modulation)
{
    switch (modulation) {
    case Modulation::DIGL:
    case Modulation::DIGU:
    case Modulation::DRM:
        return;
    case Modulation::LSB:
    case Modulation::USB:
        if (!mBin)
            copyToBothEars();
        return;
    case Modulation::CW:
        if (!mBin && dse.enable())
            dse.process(mOutput.data(), mLength);
        else if (!mBin)
            copyToBothEars();
        return;
    default:
        copyToBothEars();
        mBinaural.process(mOutput.data(), unsigned(mLength));
    }
}

void ReceiverChannel::copyToBothEars()
{
    for (int i = 0; i < mLength; ++i)
        mOutput[i].im = mOutput[i].re;
}

void ReceiverChannel::clear()
{
    clearToLookAhead();
    agc.clear();
}

void ReceiverChannel::clearToLookAhead()
{
    mDecimator.clear();
    mBandFilter.clear();
    mAm.clear();
    mSam.clear();
    mNfm.clear();
    mSsbApf.clear();
    mCwApf.clear();
    anf.clear();
    nr.clear();
    equalizer.clear();
    dse.clear();
}

void ReceiverChannel::setInputRate(double rate)
{
    mInputRate = rate;
    setTuning(0.0); // an offset in the old panorama: the owner tunes anew
    setRit(mRit);
    if (const FixedRatio *ratio = fixedRatio(rate))
        setUpDecimator(ratio->up, ratio->down);
    else
        setUpDecimator();
}

void ReceiverChannel::setOutputRate(double rate)
{
    mOutputRate = rate;
    setUpDecimator();
    setUpBandFilter();
    setUpMixers();
    setUpSsbApf();
    setUpCwApf();
    setToolRates();
}

void ReceiverChannel::setUpDecimator()
{
    int up = 0;
    int down = 0;
    Resampler::gdc(mInputRate, mOutputRate, up, down);
    setUpDecimator(up, down);
}

void ReceiverChannel::setUpDecimator(int up, int down)
{
    const double edge = (mOutputRate * 0.5 - kPreFilterMargin) / mInputRate;
    mDecimator.init(edge, kPreFilterTaps, up, down);
    mLongestInput = longestInput(up, down);
}

void ReceiverChannel::setUpBandFilter()
{
    mBandFilter.init(mBandLow / mOutputRate, mBandHigh / mOutputRate, mFilterTaps);
}

void ReceiverChannel::setUpMixers()
{
    mDiglMixer.setOsc(mDiglOffset / mOutputRate);
    mDiguMixer.setOsc(-mDiguOffset / mOutputRate);
    mDrmMixer.setOsc(kDrmShift / mOutputRate);
}

void ReceiverChannel::setUpSsbApf()
{
    const ApfSetting &apf = mSsbApfSetting;
    mSsbApf.init(apf.frequency / mOutputRate, apf.quality, apf.gainDb);
}

void ReceiverChannel::setUpCwApf()
{
    const ApfSetting &apf = mCwApfSetting;
    mCwApf.init(apf.frequency / mOutputRate, apf.quality, apf.gainDb);
}

/// The tone squelch keeps the rate that it was built with.
void ReceiverChannel::setToolRates()
{
    agc.setSampleRate(mOutputRate);
    mCw.setSampleRate(mOutputRate);
    mAm.setSampleRate(mOutputRate);
    mSam.setSampleRate(mOutputRate);
    mNfm.setSampleRate(mOutputRate);
    equalizer.setSampleRate(mOutputRate);
    dse.setSampleRate(mOutputRate);
}

void ReceiverChannel::setRit(double frequency)
{
    mRit = frequency;
    mOscillator.setRit(frequency / mInputRate);
}

void ReceiverChannel::setBand(double low, double high)
{
    mBandLow = low;
    mBandHigh = high;
    setUpBandFilter();
    const double cutoff = std::max(std::abs(low), std::abs(high));
    mAm.setFilterFc(cutoff);
    mSam.setFilterFc(cutoff);
}

void ReceiverChannel::setFilterTaps(int taps)
{
    mFilterTaps = taps;
    setUpBandFilter();
}

void ReceiverChannel::setAgcTimes(const AgcParam &param)
{
    agc.setAttack(param.attack);
    agc.setDecay(param.decay);
    agc.setHang(param.hang);
}

void ReceiverChannel::setAgcGain(int gainDb)
{
    agc.setMaximumGain(gainDb);
    agc.setFixedGain(gainDb);
}

void ReceiverChannel::setCwTone(double tone)
{
    mCwApfSetting.frequency = tone;
    setUpCwApf();
    mCw.setFrequency(tone);
    dse.setPitch(tone);
}

void ReceiverChannel::setDiglOffset(double offset)
{
    mDiglOffset = offset;
    setUpMixers();
}

void ReceiverChannel::setDiguOffset(double offset)
{
    mDiguOffset = offset;
    setUpMixers();
}

void ReceiverChannel::setBin(bool enable)
{
    mBin = enable;
    mBinaural.setOn(enable);
}

void ReceiverChannel::setApf(bool enable)
{
    mSsbApf.setEnable(enable);
    mCwApf.setEnable(enable);
}

void ReceiverChannel::setSsbApfFreq(double frequency)
{
    mSsbApfSetting.frequency = frequency;
    setUpSsbApf();
}

void ReceiverChannel::setSsbApfQuality(double quality)
{
    mSsbApfSetting.quality = quality;
    setUpSsbApf();
}

void ReceiverChannel::setSsbApfGain(double gainDb)
{
    mSsbApfSetting.gainDb = gainDb;
    setUpSsbApf();
}

void ReceiverChannel::setCwApfQuality(double quality)
{
    mCwApfSetting.quality = quality;
    setUpCwApf();
}

void ReceiverChannel::setCwApfGain(double gainDb)
{
    mCwApfSetting.gainDb = gainDb;
    setUpCwApf();
}

void ReceiverChannel::setSqlEnable(bool enable)
{
    mSql.setEnable(enable);
    sqlCtcss.setEnableSql(enable);
}

void ReceiverChannel::setSqlValue(double thresholdDbm)
{
    mSql.setThreshold(thresholdDbm);
    sqlCtcss.setThreshold(thresholdDbm);
}
} // namespace DspCore
