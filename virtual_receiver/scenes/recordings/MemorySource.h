// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SampleSource.h"

#include <vector>

namespace vr
{
/// Samples held in memory.
class MemorySource : public SampleSource
{
public:
    MemorySource(std::vector<Sample> samples, double rateHz, double frequencyHz);

    double rateHz() const override { return m_rateHz; }
    double frequencyHz() const override { return m_frequencyHz; }
    std::size_t length() const override { return m_samples.size(); }
    std::size_t read(Sample *out, std::size_t count) override;
    void seek(std::size_t sample) override { m_position = sample; }

private:
    std::vector<Sample> m_samples;
    double m_rateHz;
    double m_frequencyHz;
    std::size_t m_position = 0;
};
} // namespace vr
