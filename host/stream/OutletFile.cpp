// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/OutletFile.h"

#include <algorithm>
#include <chrono>

namespace host
{
namespace
{
using namespace std::chrono_literals;

constexpr std::uint64_t kLargestPull = 1024; // frames
constexpr auto kIdle = 1ms;                  // the ring holds 85 ms at the highest rate
} // namespace

void OutletFile::start()
{
    m_thread = std::thread([this] { run(); });
}

void OutletFile::finish()
{
    join();
    while (pull()) { }
}

void OutletFile::join()
{
    m_finish = true;
    if (m_thread.joinable())
        m_thread.join();
}

void OutletFile::run()
{
    while (!m_finish)
        if (!pull())
            std::this_thread::sleep_for(kIdle);
}

/// One block, if there is any.
bool OutletFile::pull()
{
    const std::uint64_t frames = std::min(m_ring.readyFrames(), kLargestPull);
    m_out.resize(frames * AudioFile::kChannels);
    if (frames == 0 || !m_source(m_in, m_out, frames, AudioFile::kChannels))
        return false;
    m_ring.addPulled(frames);
    m_frames += frames;
    m_level.add(m_out);
    m_file.write(m_out.data(), frames);
    return true;
}
} // namespace host
