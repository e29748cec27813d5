// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DeviceState.h"
#include "Faults.h"
#include "FramePacker.h"
#include "scenes/Scene.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace vr
{
/// What stands between the scene and FT_Read: renders the scene, packs it into frames and keeps
/// their bytes until they are read.
///
/// Not thread-safe; the device calls it from one reading thread at a time.
class FrameQueue
{
public:
    /// Frames made at a time: few enough that a command takes effect within 28 ms at the lowest
    /// rate.
    static constexpr std::uint64_t kBatchFrames = 16;

    /// What one batch of frames is made from.
    struct Batch
    {
        std::uint64_t frames = 0; ///< 1..kBatchFrames
        std::uint64_t skip = 0;   ///< frames of the scene that pass unsent before the first
        DeviceState state;
        std::shared_ptr<Scene> scene;
        std::optional<double> seek; ///< in seconds: where the scene goes on
        bool loop = false;          ///< a recording begins again after its end
        bool paused = false;        ///< zeros, and the scene stands still
        std::uint64_t run = 0;      ///< from 1; another run starts the scene anew
        std::vector<std::optional<Faults::ByteFault>> byteFaults; ///< of each frame
    };

    /// What a read has taken, frames counted once their last byte is.
    struct Delivery
    {
        std::size_t bytes = 0;
        std::uint64_t frames = 0;
        std::uint64_t samples = 0;
        std::uint64_t endedRun = 0; ///< the run whose scene has ended with it, 0: none has
    };

    /// Makes a batch and puts it after the bytes that are there.
    void make(const Batch &batch);

    std::size_t bytes() const { return m_bytes.size(); }

    /// Hands out the oldest bytes, at most size.
    Delivery deliver(std::uint8_t *buffer, std::size_t size);

    /// Drops the bytes; the scene goes on.
    void clear();

    /// Seconds from the beginning of the recording that plays up to the last sample made.
    double position() const { return m_playing ? m_playing->position() : 0.0; }

    /// Complex samples limited at full scale since the last call.
    std::uint64_t takeClipped() { return m_packer.takeClipped(); }

private:
    void follow(const Batch &batch);

    struct Frame
    {
        std::size_t end = 0; // in m_bytes
        std::size_t samples = 0;
        bool lastOfScene = false;
        std::uint64_t run = 0;
    };

    std::vector<std::uint8_t> m_bytes; // packed and not yet read
    std::vector<Frame> m_frames;       // those that end in m_bytes
    FramePacker m_packer;
    std::vector<Sample> m_samples;
    std::shared_ptr<Scene> m_playing;
    bool m_hasEnded = false; // which has been told
    std::uint64_t m_followedRun = 0;
    std::uint32_t m_followedWord = 0;
};
} // namespace vr
