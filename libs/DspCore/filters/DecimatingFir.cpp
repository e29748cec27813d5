// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/DecimatingFir.h"

#include "DspCore/filters/ConvolutionKernels.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/LowpassDesign.h"
#include "DspCore/filters/Resampler.h"
#include "signal_primitives/ipps.h"

#include <algorithm>
#include <cassert>

namespace DspCore
{
namespace
{
constexpr int kMostSets = 3;
constexpr int kLargestTransformed = 8; // from 16 on the sums over windows cost less; measured

// A window is a multiple of a cache line, and its room in front of the line one sample less, so
// that at even decimations each window begins on a cache line.
constexpr int kLineSamples = 4;

// The line begins anew from here on, which costs a copy of the history: small enough for the near
// caches, and worth several blocks.
constexpr int kLineEnd = 4096;

int roundedUp(int length)
{
    return (length + kLineSamples - 1) / kLineSamples * kLineSamples;
}

/// A window that is a fiftieth too long is worth the sums in rows.
int windowFor(int taps, int up, int down)
{
    const int window = roundedUp(taps);
    const int rows = kWindowsInRows * down;
    const int inWholeRows = (window + rows - 1) / rows * rows;
    return up == 1 && inRows(down, inWholeRows) && 50 * (inWholeRows - window) <= window
        ? inWholeRows
        : window;
}

std::vector<double> bandLimit(double edge, int taps)
{
    FastFir fir;
    fir.init(-edge, edge, taps);
    std::vector<COMPLEX> response(std::size_t(taps), COMPLEX{0.0, 0.0});
    response[0].re = 1.0;
    fir.process(response);
    // The band is symmetrical, so the response is real.
    std::vector<double> parts(response.size());
    std::ranges::transform(response, parts.begin(), &COMPLEX::re);
    return parts;
}
} // namespace

bool DecimatingFir::pays(int up, int down)
{
    return up >= 1 && up <= kMostSets
        && (isTransformed(up, down) || down > kLargestTransformed * up);
}

/// Decimations that a block of 512 leaves at the phase where it began.
bool DecimatingFir::isTransformed(int up, int down)
{
    return up == 1 && down >= 1 && down <= kLargestTransformed && kBlock % down == 0;
}

void DecimatingFir::init(double edge, int taps, int up, int down)
{
    const std::vector<double> limit = bandLimit(edge, taps);
    Window32 window;
    const FIR_REAL conversion = Resampler::design(up, window);
    const int perPhase = conversion.length() / up;
    mUp = up;
    mDown = down;
    mPhase = 0;
    mWindow = windowFor(taps + perPhase - 1, up, down);
    mTransforms = isTransformed(up, down) && mWindow <= kBlock;
    mTaps.assign(std::size_t(up), Taps(std::size_t(2 * mWindow), 0.0));
    for (int phase = 0; phase < up; ++phase) {
        // Tap i is that of the sample i samples before the newest.
        double *const newest = mTaps[std::size_t(phase)].data() + 2 * (mWindow - 1);
        for (int k = 0; k < perPhase; ++k) {
            const double gain = double(conversion.coefficients[std::size_t(phase + k * up)]) * up;
            for (int i = 0; i < taps; ++i) {
                newest[-2 * (i + k)] += gain * limit[std::size_t(i)];
                newest[-2 * (i + k) + 1] = newest[-2 * (i + k)];
            }
        }
    }
    if (mTransforms)
        setUpTransform();
    // Room for what a transform wants to see in front of a block.
    mHistory = mTransforms ? kBlock + kLineSamples - 1 : mWindow - 1;
    mLine.resize(std::size_t(std::max(mHistory + SIGNAL_MAX_SIZE, kLineEnd)));
    clear();
}

void DecimatingFir::setUpTransform()
{
    constexpr int kPoints = 2 * kBlock;
    mForward.init(kPoints);
    mInverse.init(kPoints / mDown);
    mWork.assign(kPoints, COMPLEX{0.0, 0.0});
    mFolded.resize(std::size_t(kPoints / mDown));
    mSpectrum.resize(kPoints);
    // The transforms do not divide by the number of points, the filter does.
    const double *const newest = mTaps[0].data() + 2 * (mWindow - 1);
    for (int i = 0; i < mWindow; ++i)
        mWork[std::size_t(i)].re = newest[-2 * i] / kPoints;
    mForward.direct(mWork.data(), mSpectrum.data());
}

/// Overlap-save: the second half of the circular convolution is that of the stream.
void DecimatingFir::transformBlock(const COMPLEX *block, COMPLEX *out)
{
    constexpr int kPoints = 2 * kBlock;
    const int folded = kPoints / mDown;
    mForward.direct(block - kBlock, mWork.data());
    foldProducts(mWork.data(), mSpectrum.data(), kPoints, mFolded.data(), folded);
    mInverse.invers(mFolded.data(), mWork.data());
    std::copy_n(mWork.begin() + folded / 2, folded / 2, out);
}

void DecimatingFir::clear()
{
    // The first output's window ends with the first input.
    mEnd = mHistory;
    std::fill_n(mLine.begin(), mHistory, COMPLEX{0.0, 0.0});
}

COMPLEX *DecimatingFir::room(int length)
{
    assert(length <= SIGNAL_MAX_SIZE);
    if (mUp == 0)
        return nullptr;
    if (mEnd + length > kLineEnd && mEnd > mHistory) {
        std::copy(mLine.begin() + mEnd - mHistory, mLine.begin() + mEnd, mLine.begin());
        mEnd = mHistory;
    }
    return mLine.data() + mEnd;
}

void DecimatingFir::process(const COMPLEX *in, int length, COMPLEX *out, int &outLength)
{
    if (mUp > 0 && length > 0)
        std::copy_n(in, length, room(length));
    process(length, out, outLength);
}

void DecimatingFir::process(int length, COMPLEX *out, int &outLength)
{
    outLength = 0;
    if (mUp == 0 || length < 1)
        return;
    outLength = Resampler::outputsOf(length, mUp, mPhase, mDown);
    if (mTransforms && length == kBlock && mPhase == 0) {
        transformBlock(mLine.data() + mEnd, out);
        mEnd += length;
        return;
    }
    const COMPLEX *const oldest =
        mLine.data() + mEnd - (mWindow - 1); // of the first input's window
    for (int first = 0; first < std::min(mUp, outLength); ++first) {
        const int steps = mPhase + first * mDown;
        sumWindows(oldest + steps / mUp, mDown, mTaps[std::size_t(steps % mUp)].data(), mWindow,
            out + first, mUp, (outLength - first + mUp - 1) / mUp);
    }
    mPhase = int(mPhase + (long long)outLength * mDown - (long long)length * mUp);
    mEnd += length;
}
} // namespace DspCore
