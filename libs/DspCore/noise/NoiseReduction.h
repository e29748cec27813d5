// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/noise/LmsPredictor.h"
#include "DspCore/types.h"

#include <vector>

namespace DspCore
{
/// Lets through what can be foretold: the output is the prediction of an LmsPredictor, at a gain
/// that makes up for what was lost.
///
/// Not thread-safe; the owner serialises setters and process().
class NoiseReduction
{
public:
    /// Every call empties the predictor, also without a change.
    void setEnable(bool enable);
    void clear() { mPredictor.clear(); }

    /// See LmsPredictor. None is limited here; the controls are.
    void setDelay(int delay) { mPredictor.setDelay(delay); }
    void setRate(double rate) { mPredictor.setRate(rate); }
    void setLeak(double leak) { mPredictor.setLeak(leak); }
    void setTaps(int taps) { mPredictor.setTaps(taps); }

    /// In place. Does nothing when not enabled or for bad input. Allocates nothing.
    void process(COMPLEX *buffer, int length);
    void process(std::vector<COMPLEX> &buffer);

    /// Takes one step of the gain towards half the ratio of the levels before and after the
    /// predictor, as calcRms() gives them, and returns the gain.
    double newGain(double in, double out);

    /// See LmsPredictor.
    static double calcRms(const COMPLEX *buffer, int length)
    {
        return LmsPredictor::calcRms(buffer, length);
    }
    static COMPLEX Cmul(COMPLEX a, COMPLEX b) { return LmsPredictor::Cmul(a, b); }

private:
    bool mEnable = false;
    double mGain = 1.0; // smoothed over blocks; lives through clear() and all setters
    LmsPredictor mPredictor{70, 45, 0.0007, 1e-05};
};
} // namespace DspCore
