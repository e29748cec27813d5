// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <optional>
#include <thread>

/// Keeps a reader whose device fails from spinning, and its log from filling.
///
/// A device that is unplugged fails every read at once until the watchdog ends the stream, which
/// takes a second or two and would give hundreds of thousands of lines. Reader thread only.
class FailedReads
{
public:
    /// Whether the failure at hand is to be logged: the first one, then one a second.
    bool isTold()
    {
        const auto now = std::chrono::steady_clock::now();
        if (m_told && now - *m_told < kSilence)
            return false;
        m_told = now;
        return true;
    }

    /// Until the next try; far below the time-out of a read, and the stop of a stream waits for it.
    static void pause() { std::this_thread::sleep_for(kPause); }

private:
    static constexpr std::chrono::seconds kSilence{1};
    static constexpr std::chrono::milliseconds kPause{10};

    std::optional<std::chrono::steady_clock::time_point> m_told;
};
