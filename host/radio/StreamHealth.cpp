// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/StreamHealth.h"

#include "host_interfaces/CreditPump.h"

namespace host
{
namespace
{
// What always waits: less than a block of the engine, and a read of the driver.
constexpr std::uint64_t kOnItsWay = CreditPump::kLargestRest
    + EngineLimits::readWindow(EngineLimits::kRatesHz.size() - 1) / EngineLimits::kFrameBytes
        * EngineLimits::kFrameSamples;
} // namespace

void StreamHealth::restart(std::uint64_t sent, std::uint64_t processed)
{
    m_baseline = sent - std::min(sent, processed);
    m_least = kNone;
    m_looks = 0;
}

void StreamHealth::look(std::uint64_t sent, std::uint64_t processed, std::uint64_t lost)
{
    const std::uint64_t arrived = processed + lost + m_baseline;
    m_least = std::min(m_least, sent - std::min(sent, arrived));
    if (++m_looks < kLooks)
        return;
    if (m_least > kOnItsWay) {
        m_dropped += m_least;
        m_baseline += m_least;
    }
    m_least = kNone;
    m_looks = 0;
}
} // namespace host
