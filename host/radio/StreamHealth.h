// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace host
{
/// Tells how many IQ samples of a running stream never reached the engine, which nobody counts: the
/// input ring refuses a block without a word.
///
/// What was sent and not processed is on its way, or lost. What is on its way shrinks below a block
/// again and again while the engine keeps up, so the least difference within a while is what was
/// lost. GUI thread.
class StreamHealth
{
public:
    /// From here on; what was on its way went with the stream.
    void restart(std::uint64_t sent, std::uint64_t processed);

    /// To be called some times a second, with totals that only grow. `lost` are samples that were
    /// sent and are known not to come.
    void look(std::uint64_t sent, std::uint64_t processed, std::uint64_t lost);

    /// Samples that never came, restarts left out; follows a loss within a second.
    std::uint64_t dropped() const { return m_dropped; }

private:
    static constexpr int kLooks = 25; // at 25 looks a second a second
    static constexpr std::uint64_t kNone = std::numeric_limits<std::uint64_t>::max();

    std::uint64_t m_baseline = 0; // of the difference, at the restart and after each known loss
    std::uint64_t m_least = kNone;
    int m_looks = 0;
    std::uint64_t m_dropped = 0;
};
} // namespace host
