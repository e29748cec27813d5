// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <utility>

namespace host
{
/// Notices that a run will not end by itself, as its receiver sends nothing any more.
///
/// A receiver that is slow is waited for, however long its run takes. Time in which nobody looked,
/// as the program was held up, counts for little: what came meanwhile could not be seen.
class SilenceWatch
{
public:
    using Clock = std::chrono::steady_clock;

    /// Of nothing but silence, and beyond the time that the run was to take.
    static constexpr std::chrono::seconds kPatience{5};

    /// plannedSeconds: what the run is to take in real time.
    explicit SilenceWatch(double plannedSeconds) : m_planned(plannedSeconds) { }

    void begin(Clock::time_point now) { m_last = now; }

    /// To be called again and again with the samples processed so far. True once it is time to give
    /// up.
    bool look(std::uint64_t samples, Clock::time_point now)
    {
        const Seconds step = std::min<Seconds>(now - std::exchange(m_last, now), kLongestStep);
        const bool isProgress = std::exchange(m_samples, samples) != samples;
        m_run += step;
        m_silent = isProgress ? Seconds(0) : m_silent + step;
        return m_run >= m_planned + kPatience && m_silent >= kPatience;
    }

private:
    using Seconds = std::chrono::duration<double>;
    static constexpr Seconds kLongestStep{0.5};

    Seconds m_planned;
    Seconds m_run{0.0};
    Seconds m_silent{0.0};
    Clock::time_point m_last; // look
    std::uint64_t m_samples = 0;
};
} // namespace host
