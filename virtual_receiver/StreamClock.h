// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

namespace vr
{
enum class Pace { RealTime, Free, Credit };

/// Tells how many frames of the stream are due: by the monotonic clock, without limit, or while
/// granted samples last. Times are given by the caller. Not thread-safe.
class StreamClock
{
public:
    using Time = std::chrono::steady_clock::time_point;
    static constexpr std::uint64_t kUnlimited = std::numeric_limits<std::uint64_t>::max();

    /// Starts a stream at frame 0.
    void start(double sampleRateHz, std::size_t samplesPerFrame, Time now);

    /// Nothing becomes due any more; what is due in real time stays.
    void stop(Time now);

    /// A new pace counts from now on.
    void setPace(Pace pace, Time now);
    Pace pace() const { return m_pace; }

    /// In real time the stream is so many times as fast as its rate says, from now on.
    void setSpeed(double speed, Time now);

    void addCredit(std::uint64_t samples) { m_credit += samples; }

    /// Frames that can be sent now, kUnlimited if as many as wanted.
    std::uint64_t due(Time now) const;

    /// When it is worth asking again for a number of frames; Time::max() if only an event can tell.
    Time dueAt(std::uint64_t frames, Time now) const;

    /// Counts frames as sent.
    void take(std::uint64_t frames);

    /// Counts frames as passed unsent; they cost no credit. In real time they wait for their time.
    void pass(std::uint64_t frames);

    /// In real time: passes what is due beyond so many frames, which is lost; tells how many.
    std::uint64_t dropBeyond(std::uint64_t frames, Time now);

    /// Frames passed since the last call or the start.
    std::uint64_t takePassed() { return std::exchange(m_passed, 0); }

    /// Outside real time: nothing is due before a time.
    void hold(Time until) { m_heldUntil = until; }

    std::uint64_t frame() const { return m_frame; } ///< next frame of the stream
    double seconds() const;                         ///< time of the stream at that frame
    double frameSeconds() const { return m_frameSeconds; }

private:
    Pace m_pace = Pace::RealTime;
    bool m_running = false;
    double m_speed = 1.0;
    double m_frameSeconds = 1.0;
    std::size_t m_samplesPerFrame = 1;
    std::uint64_t m_frame = 0;
    std::uint64_t m_passed = 0;
    std::uint64_t m_credit = 0; // complex samples
    Time m_started = {};        // real time: when m_startFrame began
    Time m_stopped = {};
    Time m_heldUntil = {};
    std::uint64_t m_startFrame = 0;
};
} // namespace vr
