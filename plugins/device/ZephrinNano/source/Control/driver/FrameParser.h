// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Control/driver/SampleConverter.h"
#include "DspCore/types.h"
#include "host_interfaces/EngineLimits.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Cuts the receiver's byte stream into frames and their samples.
///
/// A frame is 512 bytes, frame follows frame with nothing between:
///
///   0          4   5   6        8                                    512
///   | 55 55 55 55 | 01 | ? | ADC peak | 84 samples, I then Q, 3 bytes each |
///
/// A FIFO read can be torn at any byte, so nothing but the marker is trusted, and the distance from
/// one marker to the next decides what becomes of the bytes between them:
///
///   512      a whole frame
///   513      a byte came in: samples are read one byte later, the peak word where it always is
///   511      a byte was lost, taken to be after the samples kept: all but the last sample
///   other    not a frame; dropped
///
/// So a lost or added byte costs at most its own frame, or two frames if it hits a marker, and the
/// stream is in step again at the next marker. The last marker of a window and what follows it have
/// no end yet; they are the tail, which the next read continues.
///
/// Stateless: pure functions, any thread.
class FrameParser
{
public:
    static constexpr std::size_t kFrameBytes = EngineLimits::kFrameBytes;
    static constexpr std::size_t kPeakOffset = 6; // 16 bits, little-endian
    static constexpr std::size_t kSamplesOffset = 8;

    /// Offsets of all whole markers in the block, ascending. Markers cannot overlap. One
    /// allocation, for the list, unless the block holds more markers than frames.
    static std::vector<std::size_t> findHeaders(const std::vector<int8_t> &block);

    /// Complex samples between two markers at the given distance in bytes; 0 if that is no frame.
    /// format 0: 3 bytes a component; else 2 bytes.
    static std::size_t samplesIn(std::size_t distance, std::size_t format);

    /// Complex samples of all frames between neighbouring headers.
    static std::size_t samplesIn(const std::vector<std::size_t> &headers, std::size_t format);

    /// Converts these frames to iq, which has room for just their samples; null: nobody wants them.
    /// Returns the largest peak word of the frames kept, as unsigned 16 bits, 0 without any.
    /// Distances that are no frame go to skipped(size_t). Every sample is multiplied by the gain.
    template <typename Skipped>
    static std::uint16_t decode(const std::vector<int8_t> &block,
        const std::vector<std::size_t> &headers, std::size_t format, COMPLEX *iq, Skipped skipped,
        double gain = 1.0);

    /// Moves the bytes from the last header on to the front of the block and returns their number.
    /// Without a header there is no tail: 0, the whole block is given up.
    static std::size_t keepTail(
        std::vector<int8_t> &block, const std::vector<std::size_t> &headers);

private:
    static void convert(const std::uint8_t *bytes, std::size_t samples, std::size_t format,
        COMPLEX *out, double gain);
};

template <typename Skipped>
std::uint16_t FrameParser::decode(const std::vector<int8_t> &block,
    const std::vector<std::size_t> &headers, std::size_t format, COMPLEX *iq, Skipped skipped,
    double gain)
{
    std::uint16_t peak = 0;
    for (std::size_t i = 1; i < headers.size(); ++i) {
        const std::size_t distance = headers[i] - headers[i - 1];
        const std::size_t samples = samplesIn(distance, format);
        if (samples == 0) {
            skipped(distance);
            continue;
        }
        const auto *frame = reinterpret_cast<const std::uint8_t *>(block.data()) + headers[i - 1];
        const std::size_t shift = distance > kFrameBytes ? 1 : 0;
        if (iq != nullptr) {
            convert(frame + shift + kSamplesOffset, samples, format, iq, gain);
            iq += samples;
        }

        const auto word = std::uint16_t(frame[kPeakOffset] | frame[kPeakOffset + 1] << 8);
        peak = std::max(peak, word);
    }
    return peak;
}
