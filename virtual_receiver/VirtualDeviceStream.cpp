// SPDX-License-Identifier: GPL-3.0-or-later
// The reading thread's part of the device: what stands between the scene and FT_Read.
#include "VirtualDevice.h"

#include <algorithm>
#include <cmath>

namespace vr
{
namespace
{
using Clock = std::chrono::steady_clock;

// Frames rendered at a time: few enough that a command takes effect within 28 ms at the lowest
// rate.
constexpr std::uint64_t kBatchFrames = 16;

// The chip's own FIFO and what the USB driver of a host buffers: 30 ms at the highest rate.
constexpr std::size_t kFifoBytes = 64 * 1024 + 512 * 1024;

// After a longer gap the scene goes on from there, for rendering what nobody hears takes time too.
constexpr double kMaxSkipSeconds = 1.0;

constexpr std::uint64_t framesFor(std::size_t bytes)
{
    return (bytes + FramePacker::kFrameSize - 1) / FramePacker::kFrameSize;
}
} // namespace

FT_STATUS VirtualDevice::read(FT_HANDLE handle, std::uint8_t *buffer, DWORD size, DWORD *received)
{
    std::lock_guard stream(m_streamMutex);
    Lock lock(m_mutex);
    if (received)
        *received = 0;
    ++m_reads;
    runPlugFaults();
    if (const FT_STATUS status = m_faults.onCall("FT_Read"))
        return status;
    if (const FT_STATUS status = checkFifo(handle))
        return status;
    if (!received || (!buffer && size > 0))
        return FT_INVALID_PARAMETER;
    if (size == 0)
        return FT_OK;
    const std::size_t wanted = m_faults.onRead(size);
    if (const FT_STATUS status = fill(lock, handle, wanted))
        return status;
    // Granted samples are never lost in a read that timed out: they wait for one that they fill.
    if (m_clock.pace() != Pace::Credit || m_queue.size() >= wanted)
        *received = DWORD(deliver(buffer, wanted));
    m_shortReads += *received < size;
    return FT_OK;
}

// Makes frames until the queue holds the bytes wanted or the read timeout has passed.
FT_STATUS VirtualDevice::fill(Lock &lock, FT_HANDLE handle, std::size_t wanted)
{
    const Time deadline =
        m_readTimeoutMs ? Clock::now() + std::chrono::milliseconds(m_readTimeoutMs) : Time::max();
    for (;;) {
        forgetDropped();
        if (m_queue.size() >= wanted)
            return FT_OK;
        const Time now = Clock::now();
        runPlugFaults();
        if (const FT_STATUS status = checkFifo(handle))
            return status;
        startSilence(now);
        countOverruns(now);
        const std::uint64_t needed = std::min(framesFor(wanted - m_queue.size()), framesToEvent());
        // What falls due while the last frames are made is for the next read.
        const std::uint64_t due = m_clock.due(std::min(now, deadline));
        const bool timedOut = now >= deadline;
        const bool takeSome = timedOut && m_clock.pace() == Pace::RealTime && due > 0;
        if (due >= needed || takeSome) {
            const Batch batch = nextBatch(std::min({needed, due, kBatchFrames}));
            lock.unlock();
            make(batch);
            lock.lock();
            m_clipped += m_packer.takeClipped();
        } else if (timedOut) {
            return FT_OK;
        } else if (const Time wake = std::min(deadline, m_clock.dueAt(needed, now));
                   wake == Time::max()) {
            m_changed.wait(lock);
        } else {
            m_changed.wait_until(lock, wake);
        }
    }
}

// Frames up to the next silence or plug-out, at least one.
std::uint64_t VirtualDevice::framesToEvent() const
{
    const double frames =
        std::ceil((m_faults.nextEvent() - m_clock.seconds()) / m_clock.frameSeconds());
    return frames < double(kFifoBytes) ? std::uint64_t(std::max(frames, 1.0)) : kFifoBytes;
}

void VirtualDevice::startSilence(Time now)
{
    if (!m_state.streaming())
        return;
    const double seconds = m_clock.seconds();
    const auto span = m_faults.takeSilence(seconds);
    if (!span || span->to <= seconds)
        return;
    const double length = span->to - seconds;
    passFrames(std::uint64_t(std::ceil(length / m_clock.frameSeconds())));
    if (m_clock.pace() != Pace::RealTime)
        m_clock.hold(now + std::chrono::nanoseconds(std::llround(length * 1e9)));
}

void VirtualDevice::countOverruns(Time now)
{
    if (m_clock.pace() != Pace::RealTime)
        return;
    constexpr std::uint64_t kCapacity = kFifoBytes / FramePacker::kFrameSize;
    const std::uint64_t due = m_clock.due(now);
    if (due <= kCapacity)
        return;
    passFrames(due - kCapacity);
    m_overruns += due - kCapacity;
}

VirtualDevice::Batch VirtualDevice::nextBatch(std::uint64_t frames)
{
    Batch batch;
    batch.frames = frames;
    batch.firstFrame = m_clock.frame();
    batch.skip = std::exchange(m_skip, 0);
    batch.state = m_state;
    batch.scene = m_scene;
    batch.run = m_run;
    m_clock.take(frames);
    for (std::uint64_t i = 0; i < frames; ++i)
        batch.byteFaults.push_back(m_faults.onFrame(batch.firstFrame + i));
    return batch;
}

// Under m_streamMutex alone.
void VirtualDevice::make(const Batch &batch)
{
    const bool shortSamples = batch.state.shortSamples();
    const std::size_t perFrame = batch.state.samplesPerFrame();
    follow(batch);
    const bool endedBefore = m_playing->ended();
    m_samples.resize(std::size_t(batch.frames) * perFrame);
    m_playing->render(m_samples.data(), m_samples.size());
    const bool ends = !endedBefore && m_playing->ended();

    const double gain = batch.state.gain();
    for (std::size_t i = 0; i < batch.frames; ++i) {
        std::uint8_t frame[FramePacker::kFrameSize + 1];
        m_packer.pack(&m_samples[i * perFrame], gain, shortSamples, frame);
        std::size_t size = FramePacker::kFrameSize;
        if (const auto &fault = batch.byteFaults[i])
            size = fault->apply(frame, size);
        m_queue.insert(m_queue.end(), frame, frame + size);
        m_queuedFrames.push_back(
            {m_queue.size(), perFrame, ends && i + 1 == batch.frames, batch.run});
    }
}

// Brings the scene to where the batch's device is tuned and to the time of its first frame.
void VirtualDevice::follow(const Batch &batch)
{
    if (batch.run != m_followedRun) {
        m_playing = batch.scene;
        m_packer.restart();
        m_playing->start(batch.state.sampleRateHz(), batch.state.frequencyHz());
    } else if (batch.state.frequencyWord() != m_followedWord) {
        m_playing->retune(batch.state.frequencyHz());
    }
    m_followedRun = batch.run;
    m_followedWord = batch.state.frequencyWord();

    const double skipped = double(batch.skip) * double(batch.state.samplesPerFrame());
    auto left = std::size_t(std::min(skipped, kMaxSkipSeconds * batch.state.sampleRateHz()));
    m_samples.resize(kBatchFrames * batch.state.samplesPerFrame());
    while (left > 0) {
        const std::size_t part = std::min(left, m_samples.size());
        m_playing->render(m_samples.data(), part);
        left -= part;
    }
}

void VirtualDevice::forgetDropped()
{
    if (!std::exchange(m_queueDropped, false))
        return;
    m_queue.clear();
    m_queuedFrames.clear();
}

std::size_t VirtualDevice::deliver(std::uint8_t *buffer, std::size_t size)
{
    size = std::min(size, m_queue.size());
    std::copy_n(m_queue.begin(), size, buffer); // of nothing, too: an empty queue has no address
    m_queue.erase(m_queue.begin(), m_queue.begin() + std::ptrdiff_t(size));
    std::size_t whole = 0;
    for (QueuedFrame &frame : m_queuedFrames) {
        if (frame.end <= size) {
            ++whole;
            ++m_framesSent;
            m_samplesSent += frame.samples;
            m_sceneEnded = m_sceneEnded || (frame.lastOfScene && frame.run == m_run);
        }
        frame.end -= std::min(frame.end, size);
    }
    m_queuedFrames.erase(m_queuedFrames.begin(), m_queuedFrames.begin() + std::ptrdiff_t(whole));
    return size;
}
} // namespace vr
