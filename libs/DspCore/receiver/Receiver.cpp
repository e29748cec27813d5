// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/Receiver.h"

#include "signal_primitives/ipps.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace
{
constexpr double kFixedGain = 0.7; // linear, of each channel before the volume controls

bool isDigital(DspCore::Modulation modulation)
{
    return modulation == DspCore::Modulation::DIGL || modulation == DspCore::Modulation::DIGU
        || modulation == DspCore::Modulation::DRM;
}
} // namespace

namespace DspCore
{
Receiver::Receiver(QObject *parent)
    : QObject(parent), mBuffer(kOutletSize), mVac(kOutletSize), mLineOut(kOutletSize)
{
    setUpVolumeRamp();
    setUpRates();
    setUpPreFilters();
    setUpBandFilters();
    setUpWideBandFilter();
    setUpMixers();
    setUpTools();
}

void Receiver::process(COMPLEX *buffer, int len)
{
    assert(len <= SIGNAL_MAX_SIZE);
    if (buffer == nullptr || len < 1)
        return;

    takeInput(buffer, len);
    mInputMeter.process(a().input.data(), len);
    const Modulation modulation = mSwitcher.modulation(); // of the whole block
    if (mSwitcher.takeClear())
        clearInFade();
    tune(len);
    if (modulation == Modulation::WFM)
        runWide(len);
    else
        runNarrow(modulation, len);
    runTail();
}

void Receiver::takeInput(const COMPLEX *buffer, int len)
{
    for (ReceiverChannel &channel : mChannels) {
        ippsCopy_64fc(buffer, channel.input.data(), len);
        channel.length = 0; // wide FM leaves channel B at that
    }
}

void Receiver::clearInFade()
{
    clearFilters();
    for (ReceiverChannel &channel : mChannels)
        channel.sqlCtcss.clear();
    applyAgcParams();
    clearAgc();
}

void Receiver::applyAgcParams()
{
    if (mAgcQueue.empty())
        return;
    // Only the newest counts, as it does when someone turns a knob through many values.
    const AgcParam newest = mAgcQueue.back();
    mAgcQueue.clear();
    for (ReceiverChannel &channel : mChannels)
        channel.agc.setOn(newest.on);
    setAgcTimes(newest);
}

void Receiver::tune(int len)
{
    for (ReceiverChannel &channel : mChannels)
        channel.oscillator.process(channel.input.data(), len);
}

void Receiver::runNarrow(Modulation modulation, int len)
{
    for (ReceiverChannel &channel : mChannels)
        channel.decimate(std::min(len, mLongestInput));
    shiftDigital(modulation);
    filterBand();
    demodulate(modulation);
    if (!isDigital(modulation))
        cleanUp();
    mVac.write(a().output.data(), a().length);
    if (modulation == Modulation::LSB)
        swapParts();
    if (modulation != Modulation::NFM)
        controlLevel();
    finish(modulation);
}

void Receiver::runWide(int len)
{
    mWideFm.process(a(), len);
    if (a().length > 0)
        a().equalizer.process(a().output.data(), unsigned(a().length));
}

/// A block of a few input samples may give none at the output rate, and the filters take no empty
/// block.
template <typename Step>
void Receiver::forEachWithSamples(Step step)
{
    for (ReceiverChannel &channel : mChannels) {
        if (channel.length > 0)
            step(channel);
    }
}

void Receiver::shiftDigital(Modulation modulation)
{
    if (modulation == Modulation::DIGU) {
        forEachWithSamples(
            [](ReceiverChannel &c) { c.diguMixer.process(c.output.data(), c.length); });
    } else if (modulation == Modulation::DIGL) {
        forEachWithSamples(
            [](ReceiverChannel &c) { c.diglMixer.process(c.output.data(), c.length); });
    }
}

void Receiver::filterBand()
{
    forEachWithSamples([](ReceiverChannel &c) {
        c.bandFilter.process(c.output.data(), c.length);
        c.meter.process(c.output.data(), c.length);
    });
}

void Receiver::demodulate(Modulation modulation)
{
    switch (modulation) {
    case Modulation::AM:
        return forEachWithSamples(
            [](ReceiverChannel &c) { c.am.process(c.output.data(), c.length); });
    case Modulation::SAM:
        return forEachWithSamples(
            [](ReceiverChannel &c) { c.sam.process(c.output.data(), c.length); });
    case Modulation::LSB:
    case Modulation::USB:
        return forEachWithSamples(
            [](ReceiverChannel &c) { c.ssbApf.process(c.output.data(), c.length); });
    case Modulation::CW:
        return forEachWithSamples([](ReceiverChannel &c) {
            c.cw.process(c.output.data(), c.length);
            c.cwApf.process(c.output.data(), c.length);
        });
    case Modulation::NFM:
        return forEachWithSamples([](ReceiverChannel &c) {
            c.nfm.process(c.output.data(), c.length);
            c.sqlCtcss.process(c.output.data(), c.length, c.level);
        });
    case Modulation::DRM:
        if (a().length > 0)
            mDrmMixer.process(a().output.data(), a().length);
        return;
    default: // DSB and the mixed digital modes are what the band filter gives
        return;
    }
}

void Receiver::cleanUp()
{
    forEachWithSamples([](ReceiverChannel &c) {
        c.anf.process(c.output.data(), c.length);
        c.nr.process(c.output.data(), c.length);
        c.equalizer.process(c.output.data(), unsigned(c.length));
    });
}

/// The squelch knows the level of the last block only, so it opens and closes one block late.
void Receiver::controlLevel()
{
    forEachWithSamples([](ReceiverChannel &c) {
        c.agc.process(c.output.data(), unsigned(c.length));
        c.sql.process(c.output.data(), c.length, c.level);
    });
}

/// Mirrors the spectrum, so that the lower sideband goes on as an upper one.
void Receiver::swapParts()
{
    for (ReceiverChannel &channel : mChannels) {
        for (int i = 0; i < channel.length; ++i)
            std::swap(channel.output[i].re, channel.output[i].im);
    }
}

/// Digital modes hand out the complex signal. Binaural sideband modes and CW do so too, to the two
/// ears; the other modes are mono, and binaural delays one ear.
void Receiver::finish(Modulation modulation)
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
        return finishCw();
    default:
        copyToBothEars();
        for (ReceiverChannel &channel : mChannels)
            channel.binaural.process(channel.output.data(), unsigned(channel.length));
    }
}

void Receiver::finishCw()
{
    if (mBin)
        return;
    if (a().dse.enable())
        forEachWithSamples([](ReceiverChannel &c) { c.dse.process(c.output.data(), c.length); });
    else
        copyToBothEars();
}

void Receiver::copyToBothEars()
{
    for (ReceiverChannel &channel : mChannels)
        channel.copyLeftToRight();
}

void Receiver::runTail()
{
    mSwitcher.process(a().output.data(), b().output.data(), a().length);
    mLineOut.write(a().output.data(), a().length);
    applyFixedGain();
    applyMainVolume();
    if (mChannelBInUse)
        addChannelB();
    mClipper.process(a().output.data(), unsigned(a().length));
    if (mSoundCardCallback)
        mSoundCardCallback(gsl::span<COMPLEX>(a().output.data(), std::size_t(a().length)));
    mBuffer.write(a().output.data(), a().length);
    readMeters();
}

void Receiver::applyFixedGain()
{
    forEachWithSamples(
        [](ReceiverChannel &c) { ippsMulC_64f_I(kFixedGain, &c.output.data()->re, 2 * c.length); });
}

void Receiver::applyMainVolume()
{
    COMPLEX *left = a().output.data();
    COMPLEX *right = b().output.data();
    mMainVolume.run(mMainMute, a().length, [left, right](int i, double gain) {
        left[i].re *= gain;
        left[i].im *= gain;
        right[i].re *= gain;
        right[i].im *= gain;
    });
}

/// A's length rules both: in wide FM channel B adds what its array still holds.
void Receiver::addChannelB()
{
    const int length = a().length;
    a().gain.process(a().output.data(), length);
    b().gain.process(b().output.data(), length);
    if (length > 0)
        ippsAdd_64fc_I(b().output.data(), a().output.data(), length);
}

void Receiver::readMeters()
{
    mAdcRe = mInputMeter.adcRe();
    mAdcIm = mInputMeter.adcIm();
    for (ReceiverChannel &channel : mChannels)
        channel.level = channel.meter.dbm();
    mWfmStereoSeen = mWideFm.isStereo();
}

void Receiver::clear()
{
    clearFilters();
    clearAgc();
    mSwitcher.clear();
}

void Receiver::clearFilters()
{
    mWideFm.clear();
    for (ReceiverChannel &channel : mChannels) {
        channel.preFilter.clear();
        channel.decimator.clear();
        channel.bandFilter.clear();
        channel.ssbApf.clear();
        channel.am.clear();
        channel.sam.clear();
        channel.nfm.clear();
        channel.equalizer.clear();
        channel.nr.clear();
        channel.anf.clear();
        channel.cwApf.clear();
        channel.dse.clear();
    }
}

void Receiver::clearAgc()
{
    for (ReceiverChannel &channel : mChannels)
        channel.agc.clear();
}
} // namespace DspCore
