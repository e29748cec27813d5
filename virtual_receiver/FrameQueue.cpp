// SPDX-License-Identifier: GPL-3.0-or-later
#include "FrameQueue.h"

#include <algorithm>

namespace vr
{
namespace
{
// After a longer gap the scene goes on from there, for rendering what nobody hears takes time too.
constexpr double kMaxSkipSeconds = 1.0;
} // namespace

void FrameQueue::make(const Batch &batch)
{
    const bool shortSamples = batch.state.shortSamples();
    const std::size_t perFrame = batch.state.samplesPerFrame();
    follow(batch);
    m_samples.resize(std::size_t(batch.frames) * perFrame);
    if (batch.paused)
        std::ranges::fill(m_samples, Sample());
    else
        m_playing->render(m_samples.data(), m_samples.size());
    const bool ends = !m_hasEnded && m_playing->ended();
    m_hasEnded = m_playing->ended();

    const double gain = batch.state.gain();
    for (std::size_t i = 0; i < batch.frames; ++i) {
        std::uint8_t frame[FramePacker::kFrameSize + 1];
        m_packer.pack(&m_samples[i * perFrame], gain, shortSamples, frame);
        std::size_t size = FramePacker::kFrameSize;
        if (const auto &fault = batch.byteFaults[i])
            size = fault->apply(frame, size);
        m_bytes.insert(m_bytes.end(), frame, frame + size);
        m_frames.push_back({m_bytes.size(), perFrame, ends && i + 1 == batch.frames, batch.run});
    }
}

// Brings the scene to where the batch's device is tuned and to the time of its first frame.
void FrameQueue::follow(const Batch &batch)
{
    if (batch.run != m_followedRun) {
        m_playing = batch.scene;
        m_packer.restart();
        m_playing->start(batch.state.sampleRateHz(), batch.state.frequencyHz());
    } else if (batch.state.frequencyWord() != m_followedWord) {
        m_playing->retune(batch.state.frequencyHz());
    }
    if (batch.seek)
        m_playing->seek(*batch.seek);
    if (batch.seek || batch.run != m_followedRun)
        m_hasEnded = false;
    m_playing->setLoop(batch.loop);
    m_followedRun = batch.run;
    m_followedWord = batch.state.frequencyWord();

    const double skipped = double(batch.skip) * double(batch.state.samplesPerFrame());
    auto left = std::size_t(std::min(skipped, kMaxSkipSeconds * batch.state.sampleRateHz()));
    m_samples.resize(kBatchFrames * batch.state.samplesPerFrame());
    while (left > 0 && !batch.paused) {
        const std::size_t part = std::min(left, m_samples.size());
        m_playing->render(m_samples.data(), part);
        left -= part;
    }
}

FrameQueue::Delivery FrameQueue::deliver(std::uint8_t *buffer, std::size_t size)
{
    Delivery delivery;
    delivery.bytes = std::min(size, m_bytes.size());
    const auto end = m_bytes.begin() + std::ptrdiff_t(delivery.bytes);
    std::copy(m_bytes.begin(), end, buffer);
    m_bytes.erase(m_bytes.begin(), end);
    for (Frame &frame : m_frames) {
        if (frame.end <= delivery.bytes) {
            ++delivery.frames;
            delivery.samples += frame.samples;
            if (frame.lastOfScene)
                delivery.endedRun = frame.run;
        }
        frame.end -= std::min(frame.end, delivery.bytes);
    }
    m_frames.erase(m_frames.begin(), m_frames.begin() + std::ptrdiff_t(delivery.frames));
    return delivery;
}

void FrameQueue::clear()
{
    m_bytes.clear();
    m_frames.clear();
}
} // namespace vr
