// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/ModulationSwitcher.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
constexpr double kFadeMs = 15.0;
constexpr double kFadeRate = 39062.5; // Hz
constexpr double kShortStep = 1.0 / DspCore::ModulationSwitcher::kShortSamples;
constexpr double kSilence = 3.162277660168379e-07; // -130 dB
enum : unsigned { kProcessing, kDecrease, kSwitching, kIncrease, kPassing };
} // namespace

namespace DspCore
{
const std::array<ModulationSwitcher::Step, 5> ModulationSwitcher::kSteps = {
    &ModulationSwitcher::processing, &ModulationSwitcher::decrease, &ModulationSwitcher::switching,
    &ModulationSwitcher::increase, &ModulationSwitcher::passing};

ModulationSwitcher::Fade::Fade() : pole(std::exp(-1000.0 / (kFadeMs * kFadeRate))) { }

void ModulationSwitcher::Fade::ramp(COMPLEX *buffer, int length)
{
    double current = gain;
    const double push = (1.0 - pole) * target;
    for (int i = 0; i < length; ++i) {
        current = current * pole + push;
        buffer[i].re *= current;
        buffer[i].im *= current;
    }
    gain = current;
}

void ModulationSwitcher::Fade::rampStraight(COMPLEX *buffer, int length)
{
    double current = gain;
    for (int i = 0; i < length; ++i) {
        current = std::clamp(target, current - kShortStep, current + kShortStep);
        buffer[i].re *= current;
        buffer[i].im *= current;
    }
    gain = current;
}

bool ModulationSwitcher::Fade::arrived() const
{
    return qFuzzyCompare(float(gain), float(target));
}

void ModulationSwitcher::setModulation(Modulation modulation)
{
    if (modulation == mRequested)
        return;
    mRequested = modulation;
    fadeOut();
}

void ModulationSwitcher::setModulation(Modulation modulation, int waiting)
{
    if (modulation == mRequested)
        return;
    mCurrent = mRequested = modulation;
    mFadeA.gain = mFadeB.gain = 1.0;
    mWaiting = waiting;
    mStep = kPassing;
    mClear = true;
}

bool ModulationSwitcher::isPassing() const
{
    return mStep == kPassing;
}

void ModulationSwitcher::setAgcParam()
{
    if (mStep != kDecrease && mStep != kPassing)
        fadeOut();
}

bool ModulationSwitcher::takeClear()
{
    return std::exchange(mClear, false);
}

void ModulationSwitcher::process(COMPLEX *a, COMPLEX *b, int length)
{
    (this->*kSteps[mStep])(a, b, length);
}

void ModulationSwitcher::clear()
{
    mCurrent = mRequested;
    mStep = kProcessing;
}

void ModulationSwitcher::processing(COMPLEX *, COMPLEX *, int) { }

void ModulationSwitcher::decrease(COMPLEX *a, COMPLEX *b, int length)
{
    ramp(a, b, length);
    if (!mFadeA.arrived())
        return;
    mStep = kSwitching;
    mClear = true;
}

void ModulationSwitcher::switching(COMPLEX *a, COMPLEX *b, int length)
{
    mCurrent = mRequested;
    setTargets(1.0);
    ramp(a, b, length);
    mStep = kIncrease;
}

void ModulationSwitcher::increase(COMPLEX *a, COMPLEX *b, int length)
{
    ramp(a, b, length);
    if (mFadeA.arrived())
        mStep = kProcessing;
}

void ModulationSwitcher::passing(COMPLEX *a, COMPLEX *b, int length)
{
    const int heard = std::clamp(mWaiting - kShortSamples, 0, length);
    setTargets(kSilence);
    ramp(a + heard, b + heard, length - heard);
    mWaiting -= length;
    if (mWaiting > 0)
        return;
    mStep = kSwitching;
    mClear = true;
}

void ModulationSwitcher::fadeOut()
{
    if (mShort && mStep == kProcessing)
        mFadeA.gain = mFadeB.gain = 1.0; // of what passes, whatever became of the fade before
    mStep = kDecrease;
    setTargets(kSilence);
}

void ModulationSwitcher::setTargets(double target)
{
    mFadeA.target = target;
    mFadeB.target = target;
}

void ModulationSwitcher::ramp(COMPLEX *a, COMPLEX *b, int length)
{
    const auto ramp = mShort ? &Fade::rampStraight : &Fade::ramp;
    (mFadeA.*ramp)(a, length);
    (mFadeB.*ramp)(b, length);
}
} // namespace DspCore
