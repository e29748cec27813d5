// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/WideFm.h"

#include "signal_primitives/ipps.h"

#include <algorithm>

namespace
{
constexpr double kTuningOffsetHz = 0.0; // the oscillator in front has tuned
constexpr double kDeemphasisUs = 50.0;
constexpr double kIfBandwidthHz = 100000.0;
constexpr double kDeviationHz = 75000.0;
constexpr double kPcmBandwidthHz = 15000.0;
constexpr unsigned kDownsample = 1;
} // namespace

namespace DspCore
{
WideFm::WideFm()
{
    mDecoderInput.reserve(SIGNAL_MAX_SIZE);
    mDecoded.reserve(2 * SIGNAL_MAX_SIZE);
}

void WideFm::setRates(double inputRate, double outputRate)
{
    mResampler.setSampleRates(std::max(inputRate, kMaxRate), kMaxRate);
    setUpDecoder(std::min(inputRate, kMaxRate), outputRate);
}

void WideFm::setRatio(int up, int down, double outputRate)
{
    mResampler.init(up, down);
    setUpDecoder(kMaxRate, outputRate);
}

void WideFm::setUpDecoder(double rate, double outputRate)
{
    mDemodulator.setSampleRate(rate);
    if (rate < outputRate)
        mDecoder.reset();
    else
        mDecoder = std::make_unique<FmDecoder>(rate, kTuningOffsetHz, outputRate, true,
            kDeemphasisUs, kIfBandwidthHz, kDeviationHz, kPcmBandwidthHz, kDownsample);
}

void WideFm::setStereo(bool stereo)
{
    if (mDecoder)
        mDecoder->setStereoEnabled(stereo);
}

bool WideFm::isStereo() const
{
    return mDecoder && mDecoder->stereoDetected() && mDecoder->stereoEnabled();
}

void WideFm::process(ReceiverChannel &channel, int count)
{
    int wideCount = 0;
    mBandFilter.process(channel.input.data(), count);
    mResampler.process(channel.input.data(), count, mWide.data(), wideCount);
    channel.length = 0;
    if (wideCount < 1 || !mDecoder)
        return;
    channel.meter.process(mWide.data(), wideCount);
    mDecoderInput.resize(std::size_t(wideCount));
    ippsConvert_64f32f(&mWide[0].re, &mDecoderInput[0].re, 2 * wideCount);
    mDecoder->process(mDecoderInput, mDecoded);
    layOut(channel);
}

/// In stereo the decoder gives pairs, in mono one value for both ears.
void WideFm::layOut(ReceiverChannel &channel) const
{
    COMPLEX *output = channel.output.data();
    if (mDecoder->stereoEnabled()) {
        channel.length = int(mDecoded.size() / 2);
        ippsCopy_64fc(reinterpret_cast<const COMPLEX *>(mDecoded.data()), output, channel.length);
    } else {
        channel.length = int(mDecoded.size());
        ippsRealToCplx_64f(mDecoded.data(), mDecoded.data(), output, channel.length);
    }
}

void WideFm::clear()
{
    mBandFilter.clear();
    mResampler.clear();
    mDemodulator.clear();
}
} // namespace DspCore
