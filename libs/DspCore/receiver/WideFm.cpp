// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/WideFm.h"

#include "DspCore/receiver/FixedRatio.h"
#include "signal_primitives/ipps.h"

#include <algorithm>

namespace
{
constexpr double kTuningOffsetHz = 0.0; // the oscillator in front has tuned
constexpr double kDeemphasisUs = 50.0;
constexpr double kUsaDeemphasisUs = 75.0; // of the Americas
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
    int up = 0;
    int down = 0;
    Resampler::gdc(std::max(inputRate, kMaxRate), kMaxRate, up, down);
    mInput.setRatio(up, down);
    setUpDecoder(std::min(inputRate, kMaxRate), outputRate);
}

void WideFm::setInputRate(double inputRate, double outputRate)
{
    const FixedRatio *ratio = fixedRatio(inputRate);
    if (!ratio)
        return setRates(inputRate, outputRate);
    mInput.setRatio(ratio->wideUp, ratio->wideDown);
    setUpDecoder(kMaxRate, outputRate);
}

void WideFm::setUpDecoder(double rate, double outputRate)
{
    mRate = rate;
    if (rate < outputRate)
        mDecoder.reset();
    else
        mDecoder = std::make_unique<FmDecoder>(rate, kTuningOffsetHz, outputRate, true,
            kDeemphasisUs, kIfBandwidthHz, kDeviationHz, kPcmBandwidthHz, kDownsample);
    followRegion();
}

void WideFm::followRegion()
{
    if (!mRegional || !mDecoder)
        return;
    mDecoder->setDeemphasis(mUsa ? kUsaDeemphasisUs : kDeemphasisUs);
    mDecoder->setStereoEnabled(mStereo);
}

void WideFm::setRegional(bool regional)
{
    mRegional = regional;
    followRegion();
}

void WideFm::setUsa(bool usa)
{
    mUsa = usa;
    followRegion();
}

void WideFm::setStereo(bool stereo)
{
    mStereo = stereo;
    if (mDecoder)
        mDecoder->setStereoEnabled(stereo);
}

bool WideFm::isStereo() const
{
    return mDecoder && mDecoder->stereoDetected() && mDecoder->stereoEnabled();
}

int WideFm::process(int count, RxMeter &meter, COMPLEX *output)
{
    int wideCount = 0;
    mInput.process(count, mWide.data(), wideCount);
    if (wideCount < 1 || !mDecoder)
        return 0;
    meter.process(mWide.data(), wideCount, mRate);
    mDecoderInput.resize(std::size_t(wideCount));
    ippsConvert_64f32f(&mWide[0].re, &mDecoderInput[0].re, 2 * wideCount);
    mDecoder->process(mDecoderInput, mDecoded);
    return layOut(output);
}

/// In stereo the decoder gives pairs, in mono one value for both ears.
int WideFm::layOut(COMPLEX *output) const
{
    if (mDecoder->stereoEnabled()) {
        const int length = int(mDecoded.size() / 2);
        ippsCopy_64fc(reinterpret_cast<const COMPLEX *>(mDecoded.data()), output, length);
        return length;
    }
    const int length = int(mDecoded.size());
    ippsRealToCplx_64f(mDecoded.data(), mDecoded.data(), output, length);
    return length;
}

void WideFm::clear()
{
    mInput.clear();
}

void WideFm::restart()
{
    clear();
    if (mDecoder)
        mDecoder->restart();
}
} // namespace DspCore
