// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stream/FrameSink.h"
#include "stream/FrameSource.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace host
{
/// Fetches the audio of one source as it is made and hands it to sound card and recorder, so that
/// neither depends on the other: without a sound card a recording goes on, and the ring of the
/// receiver never runs over because nobody listens.
///
///     source -> pull every kIdle -> sink, sink, ...
///
/// Threads: its own calls the source and the sinks; the rest is called on the GUI thread. A sink
/// that is removed, and a source that is replaced, is not in use any more when the call returns.
class AudioPump
{
public:
    /// The source must outlive the pump.
    explicit AudioPump(FrameSource &source);
    ~AudioPump();
    AudioPump(const AudioPump &) = delete;
    AudioPump &operator=(const AudioPump &) = delete;

    void add(FrameSink &sink);
    void remove(FrameSink &sink);

    /// Plays another source instead: what the first one gives meanwhile is dropped. Null: back.
    void play(FrameSource *instead);

private:
    void run();
    bool pumpOnce();

    FrameSource &m_source;
    std::mutex m_mutex;
    std::condition_variable m_ended;

    // Guarded by m_mutex.
    FrameSource *m_instead = nullptr;
    std::vector<FrameSink *> m_sinks;
    bool m_end = false;

    std::vector<float> m_block; // the pump's thread
    std::thread m_thread;       // last: runs with everything else there
};
} // namespace host
