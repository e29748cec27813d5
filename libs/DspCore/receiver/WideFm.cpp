// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/WideFm.h"

#include "signal_primitives/ipps.h"

#include <algorithm>

namespace DspCore
{
void WideFm::setRates(double inputRate, double outputRate)
{
    mResampler.setSampleRates(std::max(inputRate, kMaxRate), kMaxRate);
    mStep = std::min(inputRate, kMaxRate) / outputRate;
}

void WideFm::setRatio(int up, int down, double outputRate)
{
    mResampler.init(up, down);
    mStep = kMaxRate / outputRate;
}

void WideFm::process(ReceiverChannel &channel, int count)
{
    int wideCount = 0;
    mBandFilter.process(channel.input.data(), count);
    mResampler.process(channel.input.data(), count, mWide.data(), wideCount);
    channel.length = audioLength(wideCount);
    ippsZero_64fc(channel.output.data(), channel.length);
}

void WideFm::clear()
{
    mBandFilter.clear();
    mResampler.clear();
}

int WideFm::audioLength(int count)
{
    int length = 0;
    for (; mPosition < count; mPosition += mStep)
        ++length;
    mPosition -= count;
    return std::min(length, SIGNAL_MAX_SIZE);
}
} // namespace DspCore
