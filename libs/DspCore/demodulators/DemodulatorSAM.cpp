// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/demodulators/DemodulatorSAM.h"

#include "signal_primitives/FastArctangent.h"
#include "vm_library/source/log/Log.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace DspCore
{
namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kLowPassQuality = 0.99;

// Loop gains for 30 Hz at the 48 kHz that the receiver starts with.
constexpr double kAlpha = 188.49555921538757 / 48000.0;
constexpr double kBeta = kAlpha * kAlpha * 0.25;

// Radians per sample, so far out that the loop never meets them.
constexpr double kLowestFrequency = -1000.0;
constexpr double kHighestFrequency = 1000.0;
} // namespace

DemodulatorSAM::DemodulatorSAM()
{
    designFilter();
}

void DemodulatorSAM::designFilter()
{
    mLowPass.init(Biquad::Type::LowPass, mFilterFc / mSampleRate, kLowPassQuality, 0.0);
}

void DemodulatorSAM::setSampleRate(double rate)
{
    mSampleRate = rate;
    designFilter();
}

void DemodulatorSAM::setFilterFc(double cutoff)
{
    mFilterFc = cutoff;
    designFilter();
}

void DemodulatorSAM::clear()
{
    mDcBlock.clear();
    mLowPass.clear();
}

void DemodulatorSAM::restart()
{
    clear();
    mPhase = 0.0;
    mFrequency = 0.0;
}

void DemodulatorSAM::process(COMPLEX *buffer, int length)
{
    if (buffer == nullptr || length < 1) {
        vm::log::warning(Q_FUNC_INFO, " : Incorrect input parameters!");
        return;
    }
    double phase = mPhase;
    double frequency = mFrequency;
    for (int n = 0; n < length; ++n) {
        const COMPLEX x = buffer[n];
        const double s = std::sin(phase);
        const double c = std::cos(phase);
        const double i = c * x.re - s * x.im;
        const double q = s * x.re + c * x.im;
        const double error = Velmora::fastArctangent(static_cast<float>(q), static_cast<float>(i));
        frequency = std::clamp(frequency + kBeta * error, kLowestFrequency, kHighestFrequency);
        phase += kAlpha * error + frequency;
        buffer[n] = {i, i};
    }
    mFrequency = frequency;
    mPhase = std::fmod(phase, kTwoPi);

    mDcBlock.process(buffer, length);
    mLowPass.process(buffer, length);
}
} // namespace DspCore
