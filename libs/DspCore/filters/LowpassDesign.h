// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/Window64.h"

#include <vector>

namespace DspCore
{
/// A FIR filter with real coefficients; empty if its design failed.
struct FIR_REAL
{
    std::vector<float> coefficients;

    int length() const { return int(coefficients.size()); }
    bool valid() const { return !coefficients.empty(); }
};

/// Designs a windowed-sinc low-pass for an interpolator (Oppenheim/Schafer, Discrete-Time Signal
/// Processing, windowed design).
///
/// Cut-off and rate share a unit; the cut-off is at most (rate - 0.03) / 2 and not negative, the
/// length at least 1, or else the filter comes back empty. The sinc is scaled to an absolute sum of
/// 1 before the window is applied, so the gain at 0 Hz ends near, not at, 1. The window has at
/// least 32 samples: shorter filters are reported by it and stay rectangular.
FIR_REAL newFIR_Lowpass_REAL(float cutoff, float rate, int length, Window32 &window);
} // namespace DspCore
