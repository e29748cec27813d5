// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemorySource.h"

#include <algorithm>
#include <utility>

namespace vr
{
MemorySource::MemorySource(std::vector<Sample> samples, double rateHz, double frequencyHz)
    : m_samples(std::move(samples)), m_rateHz(rateHz), m_frequencyHz(frequencyHz)
{ }

std::size_t MemorySource::read(Sample *out, std::size_t count)
{
    count = std::min(count, m_samples.size() - m_position);
    std::copy_n(m_samples.begin() + std::ptrdiff_t(m_position), count, out);
    m_position += count;
    return count;
}
} // namespace vr
