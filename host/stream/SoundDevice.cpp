// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/SoundDevice.h"

namespace host
{
namespace
{
using namespace std::chrono_literals;

constexpr std::size_t kBlockFrames = 1024; // 21 ms, what a desktop's sound server asks for
constexpr std::size_t kStartFrames = 2 * kBlockFrames; // waiting before the first block is due
constexpr std::chrono::nanoseconds kBlockTime{1'000'000'000LL * kBlockFrames / AudioFile::kRateHz};
constexpr auto kIdle = 500us; // between looks at an engine that is still busy
} // namespace

SoundDevice::SoundDevice(
    AudioCallback source, StreamFeed &feed, StreamLedger &ledger, const Sinks &sinks, bool freeRun)
    : m_source(std::move(source)), m_feed(feed), m_ledger(ledger), m_sinks(sinks),
      m_freeRun(freeRun)
{ }

SoundDevice::~SoundDevice()
{
    finish();
    join();
}

void SoundDevice::start(std::function<void()> onEnd)
{
    m_onEnd = std::move(onEnd);
    m_thread = std::thread([this] { run(); });
}

void SoundDevice::join()
{
    if (m_thread.joinable())
        m_thread.join();
}

void SoundDevice::run()
{
    m_threadClock.attach();
    m_freeRun ? runFree() : runInRealTime();
    m_feed.halt();
    drain();
    m_threadClock.detach();
    m_onEnd();
}

void SoundDevice::runFree()
{
    while (!isOver()) {
        m_feed.advance();
        if (!pullReady())
            std::this_thread::sleep_for(kIdle);
    }
}

void SoundDevice::runInRealTime()
{
    while (!isOver() && m_ledger.readyFrames() < kStartFrames)
        std::this_thread::sleep_for(kIdle);
    for (auto due = Clock::now(); !isOver(); due += kBlockTime) {
        std::this_thread::sleep_until(due);
        if (isBlockReady()) {
            pull(kBlockFrames);
            continue;
        }
        ++m_shortBlocks; // soundCardIO() would answer with silence and keep what it has
        m_out.assign(kBlockFrames * AudioFile::kChannels, 0.0f);
        keep(kBlockFrames);
    }
}

void SoundDevice::drain()
{
    while (m_feed.isDraining())
        if (!pullReady())
            std::this_thread::sleep_for(kIdle);
    pullReady();
    if (const std::size_t rest = m_ledger.readyFrames(); rest > 0)
        pull(rest);
}

/// Whether a whole block is there. A block of the engine that is just being finished decides it.
bool SoundDevice::isBlockReady() const
{
    while (m_ledger.readyFrames() < kBlockFrames && m_ledger.waitingFrames() >= kBlockFrames)
        std::this_thread::yield();
    return m_ledger.readyFrames() >= kBlockFrames;
}

/// Pulls all whole blocks that are there. False if there were none.
bool SoundDevice::pullReady()
{
    bool any = false;
    for (; m_ledger.readyFrames() >= kBlockFrames; any = true)
        pull(kBlockFrames);
    return any;
}

void SoundDevice::pull(std::size_t frames)
{
    m_out.resize(frames * AudioFile::kChannels);
    m_source(m_in, m_out, frames, AudioFile::kChannels);
    m_ledger.addPulled(frames);
    keep(frames);
}

void SoundDevice::keep(std::size_t frames)
{
    frames = std::min<std::uint64_t>(frames, m_ledger.wantedFrames() - m_frames);
    m_level.add(std::span(m_out).first(frames * AudioFile::kChannels));
    m_frames += frames;
    if (m_sinks.picture)
        m_sinks.picture->addFrames(m_out.data(), frames);
    if (m_sinks.file)
        m_sinks.file->write(m_out.data(), frames);
}
} // namespace host
