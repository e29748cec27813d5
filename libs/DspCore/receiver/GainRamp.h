// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

namespace DspCore
{
/// A gain that glides to its target instead of jumping, so that a turn of a knob does not click.
///
/// One pole per sample: gain = gain * pole + target * coefficient, in single precision. A pole of
/// exp(-1000 / (rate * ms)) makes the time constant `ms` milliseconds.
class GainRamp
{
public:
    GainRamp(float pole, float coefficient, float start)
        : mPole(pole), mCoefficient(coefficient), mCurrent(start)
    { }

    void setPole(float pole, float coefficient)
    {
        mPole = pole;
        mCoefficient = coefficient;
    }

    /// Jumps; the next run() glides from here.
    void setCurrent(float current) { mCurrent = current; }
    float current() const { return mCurrent; }

    /// The gain aimed at, linear.
    void setTarget(float target) { mTarget = target; }

    /// Calls apply(i, gain) for i = 0..length - 1. A muted ramp glides to silence and keeps its
    /// target. A ramp that has arrived stands still: the gain is then one number for the block.
    template <typename Apply>
    void run(bool muted, int length, Apply apply);

private:
    float mPole;
    float mCoefficient;
    float mCurrent;
    float mTarget = 1.0f;
};

template <typename Apply>
void GainRamp::run(bool muted, int length, Apply apply)
{
    const float target = mTarget * (muted ? 0.0f : 1.0f);
    float gain = mCurrent;
    if (qFuzzyCompare(gain, target)) {
        for (int i = 0; i < length; ++i)
            apply(i, double(gain));
        return;
    }
    for (int i = 0; i < length; ++i) {
        gain = gain * mPole + target * mCoefficient;
        apply(i, double(gain));
    }
    mCurrent = gain;
}
} // namespace DspCore
