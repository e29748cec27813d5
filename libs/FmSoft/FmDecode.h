// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FmSoft/FilterFM.h"
#include "FmSoft/PhaseDiscriminator.h"
#include "FmSoft/PilotPhaseLock.h"

/// Decoder of broadcast FM: a complex IF signal becomes audio at the PCM rate, in stereo while the
/// 19 kHz pilot is locked.
///
///     IF ─ tuner ─ low-pass ─ discriminator ─ (decimator) ─┬─ low-pass and decimation ─ mono
///                                                          └─ pilot loop: x 2 sin(38 kHz)
///                                                             ─ low-pass and decimation ─ stereo
///     mono and stereo each: 30 Hz high-pass ─ de-emphasis;  left = mono + stereo, right = mono -
///     stereo
///
/// A decoder for other rates replaces the old one. A steady stream of blocks
/// allocates nothing. Not thread-safe; the owner serialises.
class FmDecoder
{
public:
    /// Rates, offset, bandwidths and deviation in Hz; de-emphasis in microseconds (0: a time
    /// constant of one sample). The baseband runs at the IF rate / downsample.
    FmDecoder(double ifRate, double tuningOffset, double pcmRate, bool stereo, double deemphasisUs,
        double ifBandwidth, double freqDev, double pcmBandwidth, unsigned int downsample);

    /// Fills audio with left, right, left, ... while stereo is enabled (mono in both as long as no
    /// pilot is locked), else with one value per frame. The number of frames follows the rates and
    /// varies by one from block to block.
    void process(const IQSampleVector &in, SampleVector &audio);

    /// Pilot loop and recursive filters begin anew. What is wrong in the others passes by itself,
    /// within the length of their filters.
    void restart();

    /// Microseconds, as at construction; the audio goes on.
    void setDeemphasis(double microseconds);

    void setStereoEnabled(bool enabled) { mStereoEnabled = enabled; }
    bool stereoEnabled() const { return mStereoEnabled; }

    /// Whether the pilot was locked at the end of the last block.
    bool stereoDetected() const { return mStereoDetected; }

    /// Mean (the tuning error, in deviations) and RMS of the baseband, smoothed over blocks.
    double basebandMean() const { return mBasebandMean; }
    double basebandLevel() const { return mBasebandLevel; }

    /// Steps of process(). demod_stereo() mixes the pilot's second harmonic, in place, with the
    /// baseband of the same length; the others interleave left and right, the stereo one over the
    /// shorter of its inputs.
    static void demod_stereo(const SampleVector &samples_baseband, SampleVector &samples_rawstereo);
    static void mono_to_left_right(const SampleVector &mono, SampleVector &audio);
    static void stereo_to_left_right(
        const SampleVector &mono, const SampleVector &stereo, SampleVector &audio);

private:
    void measureBaseband();

    static constexpr unsigned int kTuningTableSize = 64;

    double mPcmRate;
    double mBasebandRate;
    unsigned int mDownsample;
    bool mStereoEnabled;
    bool mStereoDetected = false;
    double mBasebandMean = 0.0;
    double mBasebandLevel = 0.0;

    IQSampleVector mTuned;
    IQSampleVector mFiltered;
    SampleVector mBaseband;
    SampleVector mFullRate; // baseband ahead of its decimator
    SampleVector mMono;
    SampleVector mRawStereo;
    SampleVector mStereo;

    FineTuner mFineTuner;
    LowPassFilterFirIQ mIfFilter;
    PhaseDiscriminator mDiscriminator;
    DownsampleFilter mBasebandFilter;
    PilotPhaseLock mPilot;
    DownsampleFilter mMonoResampler;
    DownsampleFilter mStereoResampler;
    HighPassFilterIir mMonoHighPass;
    HighPassFilterIir mStereoHighPass;
    LowPassFilterRC mMonoDeemphasis;
    LowPassFilterRC mStereoDeemphasis;
};
