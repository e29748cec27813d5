// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <gsl/span>

/// Fades the IQ stream in at a start, so that the filters after it see no step.
///
/// A one-pole smoother in single precision: g = 0.05 g + 0.95 target, once per sample, so the gain
/// reads 0.95, 0.9975, ... and stands at exactly 1 after a handful of samples. Not thread-safe; the
/// owner serialises.
class InputFade
{
public:
    /// Scales I and Q in place. An empty block leaves the gain alone. Allocates nothing.
    void process(gsl::span<COMPLEX> block);

    /// The next block starts from silence.
    void reset() { m_gain = 0.0f; }

private:
    float m_gain = 0.0f;
    float m_target = 1.0f;
};
