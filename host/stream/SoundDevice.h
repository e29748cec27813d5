// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/ThreadClock.h"
#include "stream/AudioFile.h"
#include "stream/Level.h"
#include "stream/StreamFeed.h"
#include "stream/StreamLedger.h"

#include "pictures/AudioSpectrumPicture.h"

#include "host_interfaces/AudioCallback.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <vector>

namespace host
{
/// The sound card of the headless listener: pulls stereo audio of 48 kHz on a thread of its own and
/// keeps what it got in a file.
///
/// In real time it asks for a block whenever one is due, and a block that is not ready in time is
/// silence, as with any sound card. In a free run it asks for nothing that is not there. When the
/// feed has sent everything, both pull what is left and end; what does not belong to the run is not
/// kept.
class SoundDevice
{
public:
    /// Where the audio goes; either may be null.
    struct Sinks
    {
        AudioFile *file = nullptr;
        AudioSpectrumPicture *picture = nullptr;
    };

    /// source is the host's sound-card output. feed, ledger and the sinks must outlive the device.
    SoundDevice(AudioCallback source, StreamFeed &feed, StreamLedger &ledger, const Sinks &sinks,
        bool freeRun);
    ~SoundDevice();

    /// onEnd is called on the device's thread when it has pulled the last frame.
    void start(std::function<void()> onEnd);

    /// Asks for an early end; onEnd follows after what is left has been pulled. Any thread.
    void finish() { m_finish = true; }
    void join();

    std::uint64_t shortBlocks() const { return m_shortBlocks; }
    std::uint64_t frames() const { return m_frames; }
    const Level &level() const { return m_level; }
    const ThreadClock &thread() const { return m_threadClock; }

private:
    using Clock = std::chrono::steady_clock;

    void run();
    void runFree();
    void runInRealTime();
    void drain();
    bool isOver() { return m_finish || m_feed.isFinished(); }
    bool isBlockReady() const;
    bool pullReady();
    void pull(std::size_t frames);
    void keep(std::size_t frames);

    AudioCallback m_source;
    StreamFeed &m_feed;
    StreamLedger &m_ledger;
    Sinks m_sinks;
    bool m_freeRun;
    std::thread m_thread;
    std::function<void()> m_onEnd;
    std::atomic<bool> m_finish = false;

    // Written by the device's thread.
    std::vector<float> m_in;
    std::vector<float> m_out;
    std::atomic<std::uint64_t> m_shortBlocks = 0;
    std::atomic<std::uint64_t> m_frames = 0;
    Level m_level;
    ThreadClock m_threadClock;
};
} // namespace host
