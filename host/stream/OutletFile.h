// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stream/AudioFile.h"
#include "stream/Level.h"
#include "stream/OutletFill.h"

#include "host_interfaces/AudioCallback.h"

#include <atomic>
#include <thread>
#include <vector>

namespace host
{
/// Keeps the audio of an outlet beside the sound card in a file: pulls what is there, and no more,
/// on a thread of its own.
class OutletFile
{
public:
    /// source is the host's outlet; ledger must outlive the file.
    OutletFile(AudioCallback source, const StreamLedger &ledger, int rateHz)
        : m_source(std::move(source)), m_ring(ledger, rateHz)
    { }
    ~OutletFile() { join(); }

    /// Creates the file. False if that failed; error() tells why in one line.
    bool open(const QString &path, const HostSettings &settings)
    {
        return m_file.open(path, AudioFile::Format::of(settings, m_ring.rateHz()));
    }

    /// Once the outlet is open, before the stream begins.
    void start();

    /// After the last block of the engine: pulls what is left and ends.
    void finish();

    /// Completes the file. False if it is not whole.
    bool close() { return m_file.close(); }
    const AudioFile &file() const { return m_file; }

    const OutletFill &ring() const { return m_ring; }
    const QString &error() const { return m_file.error(); }

    /// Valid after finish().
    std::uint64_t frames() const { return m_frames; }
    const Level &level() const { return m_level; }

private:
    void run();
    bool pull();
    void join();

    AudioCallback m_source;
    OutletFill m_ring;
    AudioFile m_file;
    std::thread m_thread;
    std::atomic<bool> m_finish = false;

    // Written by the outlet's thread.
    std::vector<float> m_in;
    std::vector<float> m_out;
    std::uint64_t m_frames = 0;
    Level m_level;
};
} // namespace host
