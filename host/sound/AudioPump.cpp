// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/AudioPump.h"

#include <algorithm>
#include <chrono>

namespace host
{
namespace
{
using namespace std::chrono_literals;

constexpr std::size_t kMostFrames = 1024; // at once
constexpr auto kIdle = 3ms;               // a block of the engine is 10 ms long at most
} // namespace

AudioPump::AudioPump(FrameSource &source)
    : m_source(source), m_block(kMostFrames * FrameSource::kChannels), m_thread([this] { run(); })
{ }

AudioPump::~AudioPump()
{
    {
        std::lock_guard lock(m_mutex);
        m_end = true;
    }
    m_ended.notify_one();
    m_thread.join();
}

void AudioPump::add(FrameSink &sink)
{
    std::lock_guard lock(m_mutex);
    m_sinks.push_back(&sink);
}

void AudioPump::remove(FrameSink &sink)
{
    std::lock_guard lock(m_mutex);
    std::erase(m_sinks, &sink);
}

void AudioPump::play(FrameSource *instead)
{
    std::lock_guard lock(m_mutex);
    m_instead = instead;
}

void AudioPump::run()
{
    std::unique_lock lock(m_mutex);
    while (!m_end)
        if (!pumpOnce())
            m_ended.wait_for(lock, kIdle);
}

/// True if there may be more.
bool AudioPump::pumpOnce()
{
    std::size_t frames = m_source.pull(m_block.data(), kMostFrames);
    bool isMore = frames == kMostFrames;
    if (m_instead) {
        frames = m_instead->pull(m_block.data(), kMostFrames);
        isMore = isMore || frames == kMostFrames;
    }
    if (frames > 0)
        for (FrameSink *sink : m_sinks)
            sink->push(m_block.data(), frames);
    return isMore;
}
} // namespace host
