// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace vr
{
/// Makes stream frames of 512 bytes: 55 55 55 55 01, a frame counter, the peak word (little-endian;
/// bit 15 overflow, bits 13..0 peak), then the samples, I before Q, little-endian two's complement.
///
/// Full scale 1.0 is the largest positive code. What lies beyond is limited, raises the overflow
/// bit of its frame and is counted.
class FramePacker
{
public:
    static constexpr std::size_t kFrameSize = 512;
    static constexpr std::size_t kHeaderSize = 8;

    /// Complex samples in a frame: 84 of 3 bytes a component, or 126 of 2 bytes.
    static constexpr std::size_t samplesPerFrame(bool shortSamples)
    {
        return (kFrameSize - kHeaderSize) / (shortSamples ? 4 : 6);
    }

    /// Packs samplesPerFrame() samples, each times gain, into kFrameSize bytes.
    void pack(
        const std::complex<double> *samples, double gain, bool shortSamples, std::uint8_t *frame);

    /// The next frame counts from 0.
    void restart() { m_counter = 0; }

    /// Complex samples limited at full scale since the last call.
    std::uint64_t takeClipped() { return std::exchange(m_clippedSamples, 0); }

private:
    std::uint8_t m_counter = 0;
    std::uint64_t m_clippedSamples = 0;
};
} // namespace vr
