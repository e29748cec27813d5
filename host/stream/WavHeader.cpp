// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/WavHeader.h"

#include <bit>
#include <cstring>

namespace host
{
static_assert(std::endian::native == std::endian::little);

WavHeader::WavHeader(std::uint32_t rate, std::uint64_t frameCount)
    : rateHz(rate), bytesPerSecond(rate * kBytesPerFrame)
{
    if (frameCount == kUnknown)
        return;
    const std::uint64_t samples = frameCount * kBytesPerFrame;
    const std::uint64_t all = sizeof(WavHeader) + samples - sizeof riff - sizeof riffBytes;
    if (all < kIsElsewhere) {
        riffBytes = std::uint32_t(all);
        frames = std::uint32_t(frameCount);
        dataBytes = std::uint32_t(samples);
        return;
    }
    std::memcpy(riff, "RF64", sizeof riff);
    std::memcpy(reserve, "ds64", sizeof reserve);
    riffBytes64 = all;
    dataBytes64 = samples;
    frames64 = frameCount;
}
} // namespace host
