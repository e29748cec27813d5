// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/noise/LmsPredictor.h"
#include "DspCore/types.h"

namespace DspCore
{
/// Takes out what can be foretold, the steady tones: the output is the prediction error of an
/// LmsPredictor.
///
/// Not thread-safe; the owner serialises setters and process().
class AutoNotchFilter
{
public:
    /// Every call empties the predictor, also without a change.
    void setEnable(bool enable)
    {
        mEnable = enable;
        clear();
    }
    void clear() { mPredictor.clear(); }

    /// See LmsPredictor. None is limited here; the controls are.
    void setDelay(int delay) { mPredictor.setDelay(delay); }
    void setRate(double rate) { mPredictor.setRate(rate); }
    void setLeak(double leak) { mPredictor.setLeak(leak); }
    void setTaps(int taps) { mPredictor.setTaps(taps); }

    /// In place. Does nothing when not enabled or for bad input. Allocates nothing.
    void process(COMPLEX *buffer, int length)
    {
        if (!mEnable || buffer == nullptr || length < 1)
            return;
        mPredictor.process(buffer, length, [](COMPLEX x, COMPLEX predicted) {
            return COMPLEX{x.re - predicted.re, x.im - predicted.im};
        });
    }

    /// See LmsPredictor.
    static double calcRms(const COMPLEX *buffer, int length)
    {
        return LmsPredictor::calcRms(buffer, length);
    }
    static COMPLEX Cmul(COMPLEX a, COMPLEX b) { return LmsPredictor::Cmul(a, b); }

private:
    bool mEnable = false;
    LmsPredictor mPredictor{60, 64, 0.0007, 1e-05};
};
} // namespace DspCore
