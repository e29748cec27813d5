// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/FoldingConvolver.h"

#include "DspCore/filters/ConvolutionKernels.h"

#include <algorithm>

namespace DspCore
{
void FoldingConvolver::setTaps(const COMPLEX *taps, int count, int down)
{
    mPartitions = historyFrames(count);
    mFolded = kBins / down;
    mForward.init(kBins);
    mInverse.init(mFolded);
    const auto numbers = std::size_t(2 * kBins * mPartitions);
    mFilter.assign(numbers, 0.0);
    mHistory.assign(numbers, 0.0);
    mNewest = 0;
    // The transforms do not divide by the number of points, the filter does.
    constexpr double kScale = 1.0 / kBins;
    for (int k = 0; k < mPartitions; ++k) {
        const COMPLEX *const first = taps + k * kFrame;
        std::fill(mWork.begin(), mWork.end(), COMPLEX{0.0, 0.0});
        std::transform(
            first, first + std::min(kFrame, count - k * kFrame), mWork.begin(), [](COMPLEX tap) {
                return COMPLEX{tap.re * kScale, tap.im * kScale};
            });
        mForward.direct(mWork.data(), mOutputs.data());
        storeSpectrum(mOutputs.data(), kBins, mFilter.data(), k, mPartitions);
    }
}

void FoldingConvolver::take(const COMPLEX *frame)
{
    mForward.direct(frame - kFrame, mWork.data());
    mNewest = (mNewest == 0 ? mPartitions : mNewest) - 1;
    storeSpectrum(mWork.data(), kBins, mHistory.data(), mNewest, mPartitions);
}

void FoldingConvolver::process(const COMPLEX *frame, COMPLEX *out)
{
    take(frame);
    sumProducts({mHistory.data(), mPartitions}, mNewest, {mFilter.data(), mPartitions}, 0, kBins,
        mWork.data());
    foldBins(mWork.data(), kBins, mFolded);
    mInverse.invers(mWork.data(), mOutputs.data());
    std::copy_n(mOutputs.begin() + mFolded / 2, mFolded / 2, out);
}
} // namespace DspCore
