// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/Receiver.h"

#include "signal_primitives/ipps.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace
{
constexpr unsigned kOutletSize = 16384; // samples, a third of a second at 48 kHz
constexpr double kFixedGain = 0.7;      // linear, of each channel before the volume controls
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
}

void Receiver::process(COMPLEX *buffer, int len)
{
    assert(len <= SIGNAL_MAX_SIZE);
    if (buffer == nullptr || len < 1)
        return;

    takeInput(buffer, len);
    const Modulation modulation = mSwitcher.modulation(); // of the whole block
    if (mSwitcher.takeClear())
        clearInFade();
    tune(len);
    if (modulation == Modulation::WFM)
        mWideFm.process(a(), len);
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
    applyAgcParams();
}

void Receiver::applyAgcParams()
{
    // Only the newest counts, as it does when someone turns a knob through many values.
    while (!mAgcQueue.empty()) {
        mAgcApplied = limited(mAgcQueue.back());
        mAgcQueue.pop_front();
    }
}

void Receiver::tune(int len)
{
    for (ReceiverChannel &channel : mChannels)
        channel.oscillator.process(channel.input.data(), len);
}

/// A decimator that has to go up in rate makes more samples than it takes; they must fit the output
/// array.
int Receiver::longestInput() const
{
    return int(std::min<double>(SIGNAL_MAX_SIZE, (SIGNAL_MAX_SIZE - 1) * mInputRate / mOutputRate));
}

void Receiver::runNarrow(Modulation modulation, int len)
{
    for (ReceiverChannel &channel : mChannels)
        channel.decimate(std::min(len, longestInput()));
    shiftDigital(modulation);
    filterBand();
    if (modulation == Modulation::DRM)
        shiftDrm();
    mVac.write(a().output.data(), a().length);
    if (modulation == Modulation::LSB)
        swapParts();
    finish(modulation);
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
    forEachWithSamples([](ReceiverChannel &c) { c.bandFilter.process(c.output.data(), c.length); });
}

void Receiver::shiftDrm()
{
    if (a().length > 0)
        mDrmMixer.process(a().output.data(), a().length);
}

/// Mirrors the spectrum, so that the lower sideband goes on as an upper one.
void Receiver::swapParts()
{
    for (ReceiverChannel &channel : mChannels) {
        for (int i = 0; i < channel.length; ++i)
            std::swap(channel.output[i].re, channel.output[i].im);
    }
}

/// Digital modes hand out the complex signal; all others are heard with both ears.
void Receiver::finish(Modulation modulation)
{
    switch (modulation) {
    case Modulation::DIGL:
    case Modulation::DIGU:
    case Modulation::DRM:
        return;
    default:
        for (ReceiverChannel &channel : mChannels)
            channel.copyLeftToRight();
    }
}

void Receiver::runTail()
{
    mSwitcher.process(a().output.data(), b().output.data(), a().length);
    mLineOut.write(a().output.data(), a().length);
    applyFixedGain();
    applyMainVolume();
    if (mChannelBInUse)
        addChannelB();
    if (mSoundCardCallback)
        mSoundCardCallback(gsl::span<COMPLEX>(a().output.data(), std::size_t(a().length)));
    mBuffer.write(a().output.data(), a().length);
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

void Receiver::clear()
{
    clearFilters();
    mSwitcher.clear();
}

void Receiver::clearFilters()
{
    mWideFm.clear();
    for (ReceiverChannel &channel : mChannels) {
        channel.preFilter.clear();
        channel.decimator.clear();
        channel.bandFilter.clear();
    }
}
} // namespace DspCore
