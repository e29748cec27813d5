// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

namespace DspCore
{
/// Removes the mean of a complex signal: y[n] = x[n] - x[n-1] + 0.995 y[n-1], each part by itself.
///
/// A zero at 0 Hz and a pole beside it; -3 dB at 0.0008 of the sample rate. Not thread-safe.
class DcBlock
{
public:
    /// Clears the state; the argument is accepted and has no effect. Always true.
    bool init(double frequency);

    void clear();

    /// Filters in place; nothing happens for a length below 1. Allocates nothing.
    void process(COMPLEX *buffer, int length);

private:
    double mPole = 0.995;
    COMPLEX mInput{0.0, 0.0};  // of the sample before
    COMPLEX mOutput{0.0, 0.0}; // likewise
};
} // namespace DspCore
