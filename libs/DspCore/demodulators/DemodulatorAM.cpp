// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/demodulators/DemodulatorAM.h"

#include "signal_primitives/ipps.h"
#include "vm_library/source/log/Log.h"

#include <cassert>

namespace DspCore
{
namespace
{
constexpr double kLowPassQuality = 0.99;
}

DemodulatorAM::DemodulatorAM()
{
    designFilter();
}

void DemodulatorAM::designFilter()
{
    mLowPass.init(Biquad::Type::LowPass, mFilterFc / mSampleRate, kLowPassQuality, 0.0);
}

void DemodulatorAM::setSampleRate(double rate)
{
    mSampleRate = rate;
    designFilter();
}

void DemodulatorAM::setFilterFc(double cutoff)
{
    mFilterFc = cutoff;
    designFilter();
}

void DemodulatorAM::clear()
{
    mDcBlock.clear();
    mLowPass.clear();
}

void DemodulatorAM::process(COMPLEX *buffer, int length)
{
    if (buffer == nullptr || length < 1) {
        vm::log::warning(Q_FUNC_INFO, " : Incorrect input parameters!");
        return;
    }
    assert(length <= SIGNAL_MAX_SIZE);
    ippsMagnitude_64fc(buffer, mMagnitude.data(), length);
    ippsRealToCplx_64f(mMagnitude.data(), mMagnitude.data(), buffer, length);
    mDcBlock.process(buffer, length);
    mLowPass.process(buffer, length);
}
} // namespace DspCore
