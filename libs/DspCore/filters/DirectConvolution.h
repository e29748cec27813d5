// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

namespace DspCore
{
/// Zeros that directConvolution() wants to find before and after the taps.
constexpr int kDirectPadding = 64;

/// A complex FIR filter with its parts in arrays of their own, so that consecutive taps fill vector
/// registers. Both arrays have kDirectPadding zeros before tap 0 and after the last tap.
template <typename Real>
struct DirectTaps
{
    const Real *re; // tap 0
    const Real *im;
    int count;
};

/// Adds the response of a short block to what stands in `sum`:
///
///   out[j - first] = sum[j] + x[0] taps[j] + x[1] taps[j - 1] + ... + x[n - 1] taps[j - n + 1]
///
/// for j from first to last - 1. `out` may be `sum` (the result then moves down by `first` samples)
/// but must not overlap x.
void directConvolution(const COMPLEX *x, int n, const DirectTaps<double> &taps, const COMPLEX *sum,
    COMPLEX *out, int first, int last);
void directConvolution(const COMPLEX32 *x, int n, const DirectTaps<float> &taps,
    const COMPLEX32 *sum, COMPLEX32 *out, int first, int last);
} // namespace DspCore
