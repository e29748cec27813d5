// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/Dse.h"

#include "signal_primitives/ipps.h"
#include "vm_library/source/log/Log.h"

#include <cassert>
#include <utility>

namespace DspCore
{
Dse::Dse()
{
    design();
}

void Dse::design()
{
    const double tone = mPitch / mSampleRate;
    mBelow.init(0.0, tone, mTaps);
    mAbove.init(tone, 2.0 * mPitch / mSampleRate, mTaps);
}

void Dse::clear()
{
    mBelow.clear();
    mAbove.clear();
}

void Dse::setTaps(int taps)
{
    mTaps = taps;
    design();
}

void Dse::setPitch(double pitch)
{
    mPitch = pitch;
    design();
}

void Dse::setSampleRate(double rate)
{
    mSampleRate = rate;
    design();
    clear();
}

void Dse::process(COMPLEX *buffer, int length)
{
    if (buffer == nullptr || length < 1) {
        vm::log::warning("void DspCore::Dse::process(COMPLEX *, int)", __LINE__, "(", buffer, ",",
            length, "): Incorrect input parameters!");
        return;
    }
    if (!mEnable)
        return;
    assert(length <= SIGNAL_MAX_SIZE);
    ippsCopy_64fc(buffer, mBelowBlock.data(), length);
    ippsCopy_64fc(buffer, mAboveBlock.data(), length);
    mBelow.process(mBelowBlock.data(), length);
    mAbove.process(mAboveBlock.data(), length);

    const COMPLEX *left = mBelowBlock.data();
    const COMPLEX *right = mAboveBlock.data();
    if (mSwap)
        std::swap(left, right);
    for (int n = 0; n < length; ++n)
        buffer[n] = {left[n].re, right[n].re};
}
} // namespace DspCore
