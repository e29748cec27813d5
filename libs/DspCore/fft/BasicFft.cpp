// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/fft/BasicFft.h"

#include "vm_library/source/log/Log.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace DspCore
{
namespace
{
constexpr double kLog10Of2 = 0.3010299956639812;

int roundedUp(int length)
{
    return int(std::bit_ceil(unsigned(std::max(length, 2))));
}
} // namespace

template <typename Sample>
bool BasicFft<Sample>::init(int length, const char *signature)
{
    if (length == mLength)
        return true;
    mLength = roundedUp(length);
    const auto isSame = [this](const SetUp &setUp) { return setUp.length == mLength; };
    const auto same = std::find_if(mSetUps.begin(), mSetUps.end(), isSame);
    if (same != mSetUps.end()) {
        std::rotate(same, same + 1, mSetUps.end());
        mStatus = ippStsNoErr;
        return true;
    }
    SetUp setUp;
    setUp.length = mLength;
    mStatus = allocate(setUp);
    if (!succeeded(signature, __LINE__)) {
        mLength = 0;
        return false;
    }
    mSetUps.push_back(std::move(setUp));
    return true;
}

template <typename Sample>
IppStatus BasicFft<Sample>::allocate(SetUp &setUp)
{
    const int order = int(std::log10(mLength) / kLog10Of2);
    Spec *spec = nullptr;
    IppStatus status = Ops::fftInitAlloc(&spec, order, IPP_FFT_DIV_FWD_BY_N, ippAlgHintAccurate);
    if (status != ippStsNoErr)
        return status;
    setUp.spec.reset(spec);
    status = Ops::fftInitAlloc(&spec, order, IPP_FFT_NODIV_BY_ANY, ippAlgHintAccurate);
    if (status != ippStsNoErr)
        return status;
    setUp.undivided.reset(spec);
    int bufferSize = 0;
    status = Ops::fftBufferSize(spec, &bufferSize);
    if (status != ippStsNoErr)
        return status;
    // Some providers work without a buffer and say so by a size of 0.
    if (bufferSize > 0) {
        setUp.buffer.reset(ippsMalloc_8u(bufferSize));
        Q_CHECK_PTR(setUp.buffer.get());
    }
    return ippStsNoErr;
}

template <typename Sample>
void BasicFft<Sample>::free()
{
    mSetUps.clear();
    mLength = 0;
}

template <typename Sample>
bool BasicFft<Sample>::process(Sample *buffer, int length, FftType type, const char *signature)
{
    if (buffer == nullptr || length == 0 || mLength == 0 || mLength != length) {
        vm::log::warning(signature, __LINE__,
            ": (pSrcDst == 0) || (lenght == 0) || (mLenght == 0) || (mLenght != lenght)");
        mStatus = ippStsSizeErr;
        return false;
    }
    return type == FftType::Forward ? direct(buffer, signature) : invers(buffer, signature);
}

template <typename Sample>
bool BasicFft<Sample>::direct(Sample *buffer, const char *signature)
{
    mStatus = mSetUps.empty()
        ? ippStsNullPtrErr
        : Ops::fftForward(buffer, mSetUps.back().spec.get(), mSetUps.back().buffer.get());
    return succeeded(signature, __LINE__);
}

template <typename Sample>
bool BasicFft<Sample>::invers(Sample *buffer, const char *signature)
{
    mStatus = mSetUps.empty()
        ? ippStsNullPtrErr
        : Ops::fftInverse(buffer, mSetUps.back().spec.get(), mSetUps.back().buffer.get());
    return succeeded(signature, __LINE__);
}

template <typename Sample>
bool BasicFft<Sample>::directInto(const Sample *in, Sample *out, const char *signature)
{
    mStatus = mSetUps.empty()
        ? ippStsNullPtrErr
        : Ops::fftForwardInto(in, out, mSetUps.back().undivided.get(), nullptr);
    return succeeded(signature, __LINE__);
}

template <typename Sample>
bool BasicFft<Sample>::inversInto(const Sample *in, Sample *out, const char *signature)
{
    mStatus = mSetUps.empty()
        ? ippStsNullPtrErr
        : Ops::fftInverseInto(in, out, mSetUps.back().undivided.get(), nullptr);
    return succeeded(signature, __LINE__);
}

template <typename Sample>
bool BasicFft<Sample>::succeeded(const char *signature, int line) const
{
    if (mStatus == ippStsNoErr)
        return true;
    vm::log::warning(signature, line, ": ", ippGetStatusString(mStatus));
    return false;
}

template class BasicFft<COMPLEX>;
template class BasicFft<COMPLEX32>;
} // namespace DspCore
