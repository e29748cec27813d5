// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/Iir.h"

#include "vm_library/source/log/Log.h"

#include <algorithm>
#include <cassert>

namespace DspCore
{
namespace
{
constexpr int kMaxOrder = 10;
constexpr double kLowestCutoff = 1e-06; // cycles per sample
constexpr double kHighestCutoff = 0.499999;
} // namespace

bool Iir::init(double fc, int order, Type type)
{
    mOrder = std::clamp(order, 1, kMaxOrder);
    mType = type;
    free();
    for (Array *array : {&mTaps, &mDelaysRe, &mDelaysIm, &mRe, &mIm})
        std::fill(array->begin(), array->end(), 0.0);
    return design(std::clamp(fc, kLowestCutoff, kHighestCutoff)) && makeStates();
}

bool Iir::design(double fc)
{
    const auto generate = mType == Type::LowPass ? ippsIIRGenLowpass_64f : ippsIIRGenHighpass_64f;
    mStatus = generate(fc, 0.0, mOrder, mTaps.data(), ippButterworth);
    if (mStatus == ippStsNoErr)
        return true;
    vm::log::warning(Q_FUNC_INFO, __LINE__, ": ", ippGetStatusString(mStatus));
    return false;
}

bool Iir::makeStates()
{
    if (makeState(mStateRe, mDelaysRe) && makeState(mStateIm, mDelaysIm))
        return true;
    free();
    return false;
}

bool Iir::makeState(State &state, const Array &delays)
{
    IppsIIRState_64f *made = nullptr;
    mStatus = ippsIIRInitAlloc_64f(&made, mTaps.data(), mOrder, delays.data());
    if (mStatus == ippStsNoErr) {
        state.reset(made);
        return true;
    }
    vm::log::warning(Q_FUNC_INFO, __LINE__, ": ", ippGetStatusString(mStatus));
    return false;
}

void Iir::process(COMPLEX *buffer, int length)
{
    if (buffer == nullptr || length < 1) {
        vm::log::warning(Q_FUNC_INFO, " Incorrect input parameters.");
        return;
    }
    if (!mStateRe || !mStateIm) {
        vm::log::warning(Q_FUNC_INFO, " Not initialize.");
        return;
    }
    if (!mEnable)
        return;
    assert(length <= SIGNAL_MAX_SIZE);

    ippsCplxToReal_64fc(buffer, mRe.data(), mIm.data(), length);
    ippsIIR_64f_I(mRe.data(), length, mStateRe.get());
    ippsIIR_64f_I(mIm.data(), length, mStateIm.get());
    ippsRealToCplx_64f(mRe.data(), mIm.data(), buffer, length);
}

void Iir::clear()
{
    std::fill(mDelaysRe.begin(), mDelaysRe.end(), 0.0);
    std::fill(mDelaysIm.begin(), mDelaysIm.end(), 0.0);
    // A filter takes its delays when it is made.
    if (mStateRe && mStateIm)
        makeStates();
}

void Iir::free()
{
    mStateRe.reset();
    mStateIm.reset();
}
} // namespace DspCore
