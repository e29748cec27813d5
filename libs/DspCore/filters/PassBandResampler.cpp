// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/PassBandResampler.h"

#include <algorithm>
#include <cassert>

namespace DspCore
{
namespace
{
constexpr int kLineSamples = 4;        // of a cache line
constexpr int kBlocksUntilCopied = 16; // of the longest length, until the line begins anew

/// The filter's taps followed by the conversion's, as one filter.
std::vector<COMPLEX> convolved(std::span<const COMPLEX> taps, std::span<const float> conversion)
{
    std::vector<COMPLEX> both(taps.size() + conversion.size() - 1, COMPLEX{0.0, 0.0});
    for (std::size_t i = 0; i < taps.size(); ++i) {
        for (std::size_t k = 0; k < conversion.size(); ++k) {
            both[i + k].re += conversion[k] * taps[i].re;
            both[i + k].im += conversion[k] * taps[i].im;
        }
    }
    return both;
}
} // namespace

void PassBandResampler::setBand(double low, double high, int taps)
{
    endFolding();
    mFilter.init(low, high, taps);
    mIsSettled = false;
    setUpFolding();
}

void PassBandResampler::setRatio(int up, int down)
{
    mUp = up;
    mDown = down;
    mResampler.init(up, down);
    mFilter.clear();
    mIsSettled = true;
    setUpFolding();
}

/// Of an empty history: the filter at hand has seen nothing.
void PassBandResampler::setUpFolding()
{
    const std::span<const COMPLEX> taps = mFilter.taps();
    mFolds = false;
    mCanFold = mUp == 1 && FoldingConvolver::canDecimate(mDown) && !taps.empty()
        && !mResampler.taps().empty();
    if (!mCanFold)
        return;
    const auto both = convolved(taps, mResampler.taps());
    mFolding.setTaps(both.data(), int(both.size()), mDown);
    mHistory = kFrame * FoldingConvolver::historyFrames(int(both.size()));
    mLine.resize(std::size_t(mHistory + std::max(kBlocksUntilCopied * kFrame, SIGNAL_MAX_SIZE)));
    clearLine();
}

void PassBandResampler::clearLine()
{
    mEnd = mHistory;
    std::fill_n(mLine.begin(), mHistory, COMPLEX{0.0, 0.0});
}

COMPLEX *PassBandResampler::room(int length)
{
    assert(length <= SIGNAL_MAX_SIZE);
    if (!mCanFold)
        return mBlock.data();
    if (mEnd + length > int(mLine.size()) || mEnd % kLineSamples != 0) {
        std::copy(mLine.begin() + mEnd - mHistory, mLine.begin() + mEnd, mLine.begin());
        mEnd = mHistory;
    }
    return mLine.data() + mEnd;
}

void PassBandResampler::process(int length, COMPLEX *out, int &outLength)
{
    if (!mCanFold)
        return processPlain(mBlock.data(), length, out, outLength);
    const COMPLEX *const block = mLine.data() + mEnd;
    if (length == kFrame && mResampler.phase() == 0 && mIsSettled) {
        if (!mFolds)
            beginFolding();
        mFolding.process(block, out);
        outLength = kFrame / mDown;
    } else {
        endFolding();
        const bool hadTail = mFilter.hasTail();
        std::copy_n(block, length, mBlock.begin());
        processPlain(mBlock.data(), length, out, outLength);
        mIsSettled = !hadTail && (mIsSettled || length >= int(mResampler.taps().size()));
    }
    mEnd += length;
}

void PassBandResampler::processPlain(COMPLEX *block, int length, COMPLEX *out, int &outLength)
{
    mFilter.process(block, length);
    mResampler.process(block, length, out, outLength);
}

/// The oldest frame of the history is there for the one after it only.
void PassBandResampler::beginFolding()
{
    mFolds = true;
    for (int at = mEnd - mHistory + kFrame; at < mEnd; at += kFrame)
        mFolding.take(mLine.data() + at);
}

/// What the filter still has of earlier inputs is older than its taps then. Whole frames leave the
/// resampler at phase 0.
void PassBandResampler::endFolding()
{
    if (!mFolds)
        return;
    mFolds = false;
    for (int at = mEnd - mHistory; at < mEnd; at += kFrame) {
        int outLength = 0;
        std::copy_n(mLine.begin() + at, kFrame, mBlock.begin());
        processPlain(mBlock.data(), kFrame, mBlock.data(), outLength);
    }
}

void PassBandResampler::clear()
{
    mFolds = false;
    mIsSettled = true;
    mFilter.clear();
    mResampler.clear();
    clearLine();
}
} // namespace DspCore
