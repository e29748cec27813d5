// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scenes/Scene.h"

namespace vr
{
/// Recorded IQ samples at a fixed rate, full scale 1.0.
class SampleSource
{
public:
    virtual ~SampleSource() = default;

    virtual double rateHz() const = 0;

    /// Radio frequency of the recording's zero hertz, 0 if it is not known.
    virtual double frequencyHz() const = 0;

    /// Complex samples of one pass.
    virtual std::size_t length() const = 0;

    /// Reads up to count samples of this pass; fewer only at its end.
    virtual std::size_t read(Sample *out, std::size_t count) = 0;

    /// Goes on with that sample, length() at most.
    virtual void seek(std::size_t sample) = 0;
};
} // namespace vr
