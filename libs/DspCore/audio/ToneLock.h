// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

namespace DspCore
{
/// Tells whether a sub-audible tone is there, from the periods between falling zero crossings of a
/// narrow-band signal.
///
/// Every sample counts, those at the joints of blocks too, and each period weighs by its own time:
/// what comes out does not depend on how the stream is cut. The tone is found after more than a
/// tenth of a second of periods that fit it, and lost after more than a sixth of a second of others
/// or of none. A period is judged by the frequency smoothed over periods. Not thread-safe; the
/// owner serialises.
class ToneLock
{
public:
    /// Hertz. Begins anew.
    void setSampleRate(double rate);

    /// Forgets what it has found; the rate stays.
    void clear();

    /// Follows the imaginary parts of the next samples. True while the tone of this index is there.
    bool process(const COMPLEX *buffer, int length, int tone);

private:
    void judge(bool isTone, int samples);

    double mSampleRate = 48000.0;
    double mLast = -1.0;     // the sample before; of no crossing at first
    int mPeriod = 0;         // samples since the last crossing
    int mFitting = 0;        // samples of periods in a row that fit
    int mOthers = 0;         // samples of periods in a row that do not
    float mFrequency = 0.0f; // hertz, smoothed over periods
    bool mLocked = false;
};
} // namespace DspCore
