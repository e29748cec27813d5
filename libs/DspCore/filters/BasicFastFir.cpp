// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/BasicFastFir.h"

#include "vm_library/source/log/Log.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

namespace DspCore
{
namespace
{
constexpr int kMinTaps = 16;
constexpr double kNyquist = 0.5; // cycles per sample

int fftSizeFor(int taps, int block, int maximum)
{
    const long long needed = std::clamp<long long>((long long)taps + block - 1, 2, maximum);
    return int(std::bit_ceil(unsigned(needed)));
}
} // namespace

template <typename Sample>
bool BasicFastFir<Sample>::init(double low, double high, int taps)
{
    low = std::clamp(low, -kNyquist, kNyquist);
    high = std::clamp(high, -kNyquist, kNyquist);
    const int used = std::clamp(taps, kMinTaps, mConvolver.kMaxTaps);
    mWindow.init(used, Window::BlackmanNuttall);
    calculate(low, high, used);
    // By the taps asked for: a request below the least number of taps may so get a transform that
    // is too short for a whole block, whose end then wraps around.
    mConvolver.setFilter(
        mTaps.data(), used, fftSizeFor(taps, mConvolver.kMaxBlock, mConvolver.kMaxFftSize));
    return true;
}

template <typename Sample>
void BasicFastFir<Sample>::calculate(double low, double high, int taps)
{
    using Real = typename Primitives<Sample>::Real;
    constexpr double kPi = std::numbers::pi;

    const double halfWidth = (high - low) / 2.0;  // cycles per sample
    const double centreStep = kPi * (low + high); // radians per tap
    mTaps.resize(std::size_t(taps));
    for (int i = 1; i <= taps; ++i) {
        const int k = i - taps / 2;
        const double h = k == 0 ? 2.0 * halfWidth : std::sin(2.0 * kPi * halfWidth * k) / (kPi * k);
        mTaps[std::size_t(i - 1)] = {
            Real(2.0 * h * std::cos(centreStep * k)), Real(2.0 * h * std::sin(centreStep * k))};
    }
    mWindow.process(mTaps.data(), taps);
}

template <typename Sample>
bool BasicFastFir<Sample>::process(Sample *buffer, int length, const char *signature)
{
    if (buffer == nullptr || length == 0) {
        vm::log::warning(signature, __LINE__, ": Incorrect input parameters. ");
        return false;
    }
    constexpr int kBlock = BlockConvolver<Sample>::kMaxBlock;
    if (length > kBlock) {
        bool good = true;
        for (int done = 0; done < length; done += kBlock)
            good &= process(buffer + done, std::min(kBlock, length - done), signature);
        return good;
    }
    mStatus = mConvolver.process(buffer, length);
    if (mStatus != ippStsNoErr) {
        vm::log::warning(
            signature, __LINE__, " (", buffer, ",", length, "):", ippGetStatusString(mStatus));
        return false;
    }
    return true;
}

template class BasicFastFir<COMPLEX>;
template class BasicFastFir<COMPLEX32>;
} // namespace DspCore
