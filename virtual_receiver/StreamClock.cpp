// SPDX-License-Identifier: GPL-3.0-or-later
#include "StreamClock.h"

#include <algorithm>
#include <cmath>

namespace vr
{
void StreamClock::start(double sampleRateHz, std::size_t samplesPerFrame, Time now)
{
    m_running = true;
    m_samplesPerFrame = samplesPerFrame;
    m_frameSeconds = double(samplesPerFrame) / sampleRateHz;
    m_frame = 0;
    m_passed = 0;
    m_startFrame = 0;
    m_started = now;
    m_heldUntil = {};
}

void StreamClock::stop(Time now)
{
    if (m_running)
        m_stopped = now;
    m_running = false;
}

void StreamClock::setPace(Pace pace, Time now)
{
    m_pace = pace;
    m_started = now;
    m_stopped = now;
    m_startFrame = m_frame;
    m_heldUntil = {};
}

void StreamClock::setSpeed(double speed, Time now)
{
    if (speed == m_speed)
        return;
    setPace(m_pace, now);
    m_speed = speed;
}

double StreamClock::seconds() const
{
    return double(m_frame) * m_frameSeconds;
}

std::uint64_t StreamClock::due(Time now) const
{
    if (m_pace == Pace::RealTime) {
        const std::chrono::duration<double> run = (m_running ? now : m_stopped) - m_started;
        const double frames = double(m_startFrame) + run.count() * m_speed / m_frameSeconds;
        return frames > double(m_frame) ? std::uint64_t(frames) - m_frame : 0;
    }
    if (!m_running || now < m_heldUntil)
        return 0;
    return m_pace == Pace::Free ? kUnlimited : m_credit / m_samplesPerFrame;
}

StreamClock::Time StreamClock::dueAt(std::uint64_t frames, Time now) const
{
    if (!m_running)
        return Time::max();
    if (m_pace != Pace::RealTime)
        return now < m_heldUntil ? m_heldUntil : Time::max();
    // One nanosecond above the exact time, so that due() does not fall short by rounding.
    const double seconds = double(m_frame + frames - m_startFrame) * m_frameSeconds / m_speed;
    return m_started + std::chrono::nanoseconds(std::llround(seconds * 1e9) + 1);
}

void StreamClock::take(std::uint64_t frames)
{
    m_frame += frames;
    if (m_pace == Pace::Credit)
        m_credit -= std::min(m_credit, frames * m_samplesPerFrame);
}

void StreamClock::pass(std::uint64_t frames)
{
    m_frame += frames;
    m_passed += frames;
}

std::uint64_t StreamClock::dropBeyond(std::uint64_t frames, Time now)
{
    const std::uint64_t waiting = m_pace == Pace::RealTime ? due(now) : 0;
    const std::uint64_t lost = waiting - std::min(waiting, frames);
    pass(lost);
    return lost;
}
} // namespace vr
