// SPDX-License-Identifier: GPL-3.0-or-later
#include "FmSoft/FmDecode.h"

#include "FmSoft/DotProduct.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace
{
constexpr double kPilotHz = 19000.0;
constexpr double kPilotBandwidthHz = 50.0;
constexpr double kPilotMinimum = 0.04; // of the full deviation
constexpr double kHighPassHz = 30.0;
constexpr unsigned int kIfFilterOrder = 10;
constexpr double kSmoothing = 0.95;

DownsampleFilter audioResampler(double basebandRate, double pcmBandwidth, double pcmRate)
{
    return {static_cast<unsigned int>(basebandRate / 1000.0), pcmBandwidth / basebandRate,
        basebandRate / pcmRate, false};
}

double deemphasisSamples(double microseconds, double pcmRate)
{
    return microseconds == 0.0 ? 1.0 : microseconds * pcmRate * 1.0e-6;
}
} // namespace

FmDecoder::FmDecoder(double ifRate, double tuningOffset, double pcmRate, bool stereo,
    double deemphasisUs, double ifBandwidth, double freqDev, double pcmBandwidth,
    unsigned int downsample)
    : mPcmRate(pcmRate), mBasebandRate(ifRate / downsample), mDownsample(downsample),
      mStereoEnabled(stereo),
      mFineTuner(kTuningTableSize,
          static_cast<int>(std::lrint(-double(kTuningTableSize) * tuningOffset / ifRate))),
      mIfFilter(kIfFilterOrder, ifBandwidth / ifRate), mDiscriminator(freqDev / ifRate),
      mBasebandFilter(8 * downsample, 0.4 / downsample, downsample, true),
      mPilot(kPilotHz / mBasebandRate, kPilotBandwidthHz / mBasebandRate, kPilotMinimum),
      mMonoResampler(audioResampler(mBasebandRate, pcmBandwidth, pcmRate)),
      mStereoResampler(audioResampler(mBasebandRate, pcmBandwidth, pcmRate)),
      mMonoHighPass(kHighPassHz / pcmRate), mStereoHighPass(kHighPassHz / pcmRate),
      mMonoDeemphasis(deemphasisSamples(deemphasisUs, pcmRate)),
      mStereoDeemphasis(deemphasisSamples(deemphasisUs, pcmRate))
{ }

void FmDecoder::process(const IQSampleVector &in, SampleVector &audio)
{
    mFineTuner.process(in, mTuned);
    mIfFilter.process(mTuned, mFiltered);
    mDiscriminator.process(mFiltered, mBaseband);
    if (mDownsample > 1) {
        std::swap(mBaseband, mFullRate);
        mBasebandFilter.process(mFullRate, mBaseband);
    }
    measureBaseband();

    mMonoResampler.process(mBaseband, mMono);
    mMonoHighPass.process_inplace(mMono);
    mMonoDeemphasis.process_inplace(mMono);
    if (!mStereoEnabled) {
        std::swap(audio, mMono);
        return;
    }

    mPilot.process(mBaseband, mRawStereo);
    mStereoDetected = mPilot.locked();
    demod_stereo(mBaseband, mRawStereo);
    mStereoResampler.process(mRawStereo, mStereo);
    mStereoHighPass.process_inplace(mStereo);
    mStereoDeemphasis.process_inplace(mStereo);

    if (mStereoDetected)
        stereo_to_left_right(mMono, mStereo, audio);
    else
        mono_to_left_right(mMono, audio);
}

void FmDecoder::setDeemphasis(double microseconds)
{
    for (LowPassFilterRC *filter : {&mMonoDeemphasis, &mStereoDeemphasis})
        filter->setTimeConstant(deemphasisSamples(microseconds, mPcmRate));
}

void FmDecoder::restart()
{
    mPilot.restart();
    mStereoDetected = false;
    for (HighPassFilterIir *filter : {&mMonoHighPass, &mStereoHighPass})
        filter->clear();
    for (LowPassFilterRC *filter : {&mMonoDeemphasis, &mStereoDeemphasis})
        filter->clear();
    mBasebandMean = 0.0;
    mBasebandLevel = 0.0;
}

void FmDecoder::measureBaseband()
{
    constexpr std::size_t kLanes = 8; // the order of a plain sum would forbid vectors
    double sums[kLanes] = {};
    std::size_t n = 0;
    for (; n + kLanes <= mBaseband.size(); n += kLanes) {
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            sums[lane] += mBaseband[n + lane];
    }
    double sum = std::accumulate(sums, sums + kLanes, 0.0);
    sum = std::accumulate(mBaseband.begin() + std::ptrdiff_t(n), mBaseband.end(), sum);
    const double squares = FmSoft::dotProduct(mBaseband.data(), mBaseband.data(), mBaseband.size());
    const auto count = static_cast<double>(mBaseband.size());
    mBasebandMean = kSmoothing * mBasebandMean + 0.05 * (sum / count);
    mBasebandLevel = kSmoothing * mBasebandLevel + 0.05 * std::sqrt(squares / count);
}

void FmDecoder::demod_stereo(const SampleVector &samples_baseband, SampleVector &samples_rawstereo)
{
    const std::size_t n = samples_baseband.size();
    assert(n == samples_rawstereo.size());
    for (std::size_t i = 0; i < n; ++i)
        samples_rawstereo[i] *= 2.0 * samples_baseband[i];
}

void FmDecoder::mono_to_left_right(const SampleVector &mono, SampleVector &audio)
{
    audio.resize(2 * mono.size());
    for (std::size_t i = 0; i < mono.size(); ++i) {
        audio[2 * i] = mono[i];
        audio[2 * i + 1] = mono[i];
    }
}

void FmDecoder::stereo_to_left_right(
    const SampleVector &mono, const SampleVector &stereo, SampleVector &audio)
{
    // The two resamplers part by a sample when the stereo one stood still for a while.
    const std::size_t n = std::min(mono.size(), stereo.size());
    audio.resize(2 * n);
    for (std::size_t i = 0; i < n; ++i) {
        audio[2 * i] = mono[i] + stereo[i];
        audio[2 * i + 1] = mono[i] - stereo[i];
    }
}
