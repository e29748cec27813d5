// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/DownConverter.h"

#include "vm_library/source/log/Log.h"

#include <algorithm>
#include <cassert>

namespace DspCore
{
namespace
{
constexpr double kNyquist = 0.5; // cycles per sample

double limited(double frequency)
{
    return std::clamp(frequency, -kNyquist, kNyquist);
}
} // namespace

void DownConverter::setOsc(double frequency)
{
    mOsc = limited(-frequency);
}

void DownConverter::setRit(double frequency)
{
    mRit = limited(-frequency);
}

/// The tone generator takes 0..1.
double DownConverter::toneFrequency() const
{
    const double frequency = limited(mOsc + mRit);
    return frequency < 0.0 ? frequency + 1.0 : frequency;
}

void DownConverter::process(const COMPLEX *buffer, COMPLEX *mixed, int length)
{
    if (buffer == nullptr || length < 1) {
        vm::log::warning(Q_FUNC_INFO, " (", buffer, ",", length, "): Incorrect input parameters!");
        return;
    }
    assert(length <= SIGNAL_MAX_SIZE);
    mStatus = mMixer.mix(buffer, mixed, length, toneFrequency(), &mPhase);
    if (mStatus != ippStsNoErr)
        vm::log::warning(Q_FUNC_INFO, __LINE__, ": ", ippGetStatusString(mStatus));
}

void DownConverter::skip(int length)
{
    mStatus = mMixer.skip(length, toneFrequency(), &mPhase);
}
} // namespace DspCore
