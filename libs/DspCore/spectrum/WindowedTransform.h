// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/AlignedVector.h"
#include "DspCore/fft/FFT64.h"
#include "DspCore/filters/Window64.h"
#include "DspCore/types.h"

namespace DspCore
{
/// Window, transform and power of a line that stands in a ring, in single precision.
///
///     ring ── window, first step ──┬─ bins 0, 4, 8 .. ──┐
///                                  ├─ bins 1, 5, 9 ..   ├── |.|^2 ── line
///                                  ├─ bins 2, 6, 10 ..  │
///                                  └─ bins 3, 7, 11 .. ─┘
///
/// The first step of the transform (radix 4, decimation in frequency: W. M. Gentleman, G. Sande,
/// "Fast Fourier Transforms - for Fun and Profit", 1966) meets every sample where the window does,
/// and takes the line out of the ring in the same pass. The four transforms that remain fit the
/// nearest cache, and their bins find their order while they are squared. Not thread-safe.
class WindowedTransform
{
public:
    /// A power of two, at least 256 points.
    void init(int size, Window window);

    /// Window and first step of init()'s size of samples, of which the oldest is ring[oldest],
    /// into `work`, of as many. Nothing reads the ring later.
    void take(const COMPLEX32 *ring, int oldest, COMPLEX32 *work) const;

    /// The rest: power of the transform divided by its size, of negative frequencies first.
    /// `work` as take() has left it; `bins` of as many is scratch.
    void power(const COMPLEX32 *work, COMPLEX32 *bins, REAL32 *line);

private:
    int mQuarter = 0; // of the size
    FFT32 mFft;       // of a quarter
    AlignedVector<REAL32> mWindow;
    AlignedVector<REAL32> mTurnRe; // a quarter
    AlignedVector<REAL32> mTurnIm;
};
} // namespace DspCore
