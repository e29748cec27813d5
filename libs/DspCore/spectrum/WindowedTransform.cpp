// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/WindowedTransform.h"

#include "DspCore/spectrum/LineKernels.h"

#include <cmath>
#include <numbers>

namespace DspCore
{
void WindowedTransform::init(int size, Window window)
{
    mQuarter = size / 4;
    mFft.init(mQuarter);
    mWindow.resize(std::size_t(size));
    Window32::calc(mWindow.data(), size, window);
    mTurnRe.clear();
    mTurnIm.clear();
    for (int n = 0; n < mQuarter; ++n) {
        const double angle = 2.0 * std::numbers::pi * n / size;
        mTurnRe.push_back(REAL32(std::cos(angle)));
        mTurnIm.push_back(REAL32(-std::sin(angle)));
    }
}

// The quarters of a ring of a power of two are whole quarters apart, so all four come to its end,
// or to their own, at the same sample.
void WindowedTransform::take(const COMPLEX32 *ring, int oldest, COMPLEX32 *work) const
{
    const FirstStep step{mQuarter, mWindow.data(), mTurnRe.data(), mTurnIm.data()};
    const int size = 4 * mQuarter;
    const int before = mQuarter - oldest % mQuarter;
    const auto part = [&](int first, int count) {
        const COMPLEX32 *quarters[4];
        for (int q = 0; q < 4; ++q)
            quarters[q] = ring + (oldest + q * mQuarter + first) % size;
        firstStep(step, quarters, work, first, count);
    };
    part(0, before);
    part(before, mQuarter - before);
}

void WindowedTransform::power(const COMPLEX32 *work, COMPLEX32 *bins, REAL32 *line)
{
    for (int r = 0; r < 4; ++r)
        mFft.direct(work + r * mQuarter, bins + r * mQuarter);
    const REAL32 perSize = 1.0f / REAL32(4 * mQuarter);
    powerLine(bins, perSize * perSize, line, mQuarter);
}
} // namespace DspCore
