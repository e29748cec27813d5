// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/demodulators/DemodulatorCW.h"

#include "vm_library/source/log/Log.h"

namespace DspCore
{
DemodulatorCW::DemodulatorCW()
{
    tune();
}

void DemodulatorCW::tune()
{
    mMixer.setOsc(-mFrequency / mSampleRate);
}

void DemodulatorCW::setSampleRate(double rate)
{
    mSampleRate = rate;
    tune();
}

void DemodulatorCW::setFrequency(double tone)
{
    mFrequency = tone;
    tune();
}

void DemodulatorCW::process(COMPLEX *buffer, int length)
{
    if (buffer == nullptr || length < 1) {
        vm::log::warning(Q_FUNC_INFO, " : Incorrect input parameters!");
        return;
    }
    mMixer.process(buffer, length);
}
} // namespace DspCore
