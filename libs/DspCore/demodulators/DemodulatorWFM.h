// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/Biquad.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/types.h"

#include <vector>

namespace DspCore
{
/// Broadcast-FM demodulator in place on a complex block: discriminator, stereo difference by a loop
/// on the 19 kHz pilot, pilot notch, de-emphasis, audio low-pass.
///
/// Left and right are the real and the imaginary part; the second channel sums back to mono. The
/// receiver's wide-FM road is FmDecoder; this block stands for itself. Not thread-safe; the owner
/// serialises.
class DemodulatorWFM
{
public:
    /// 48 kHz, mono, 50 us.
    DemodulatorWFM();

    /// In place, length 1..16384. A null buffer or a length below 1 is reported and left
    /// alone. Allocates nothing.
    void process(COMPLEX *buffer, int length);

    /// Steps of process(). demodulation() turns samples into phase steps in radians, in both parts.
    /// processPilotPll() runs the loop over the filtered pilot, keeps its phase for each sample and
    /// returns whether it is locked. deemphasis() is the one-pole low-pass on both parts.
    void demodulation(COMPLEX *buffer, int length);
    bool processPilotPll(const COMPLEX *buffer, int length);
    void deemphasis(COMPLEX *buffer, int length);

    /// Restarts the pilot loop at the present rate.
    void initPilotPll();

    /// Empties the history of discriminator, de-emphasis and filters.
    void clear();

    /// Hertz. Designs everything but the pilot's FIR anew, and clears.
    void setSampleRate(double rate);
    double sampleRate() const { return mSampleRate; }

    void setStereo(bool stereo) { mStereo = stereo; }
    bool stereo() const { return mStereo; }

    /// Stereo wanted and pilot locked.
    bool isStereo() const { return mStereo && mLocked; }

    /// De-emphasis of 75 us (true) or 50 us.
    void setUsaRegion(bool usa);
    bool usaRegion() const { return mUsa; }

private:
    void designDeemphasis();
    void addStereo(COMPLEX *buffer, int length);

    static constexpr int kWorkSize = 16384;

    bool mStereo = false;
    double mSampleRate = 48000.0;
    bool mUsa = false;
    COMPLEX mPrevious{0.0, 0.0}; // conjugated
    COMPLEX mDeemphasisState{0.0, 0.0};
    double mDeemphasisFactor = 0.0;
    double mOutputScale = 1.0;
    Biquad mAudioLowPass;
    Biquad mSpareLowPass;
    Biquad mPilotBandPass;
    Biquad mPilotNotch;
    FastFir mPilotFir;
    std::vector<COMPLEX> mPilot = std::vector<COMPLEX>(kWorkSize);
    std::vector<double> mPilotPhase = std::vector<double>(kWorkSize); // radians
    std::vector<double> mPilotSine = std::vector<double>(kWorkSize);  // of twice the phase
    bool mLocked = false;
    double mPhase = 0.0;     // radians
    double mFrequency = 0.0; // radians per sample
    double mLowestFrequency = 0.0;
    double mHighestFrequency = 0.0;
    double mAlpha = 0.0;
    double mBeta = 0.0;
    double mLockError = 0.0; // radians squared, smoothed
    double mLockFactor = 0.0;
    double mPilotQuality = 50.0;
};
} // namespace DspCore
