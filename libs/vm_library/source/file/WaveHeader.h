// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace vm::file
{
static_assert(std::endian::native == std::endian::little, "the records of a file lie as in memory");

/// The first 44 bytes of a recording: the RIFF head, the format chunk and the head of the chunk
/// that follows. The fields stand in the file as they stand here, without gaps.
struct WaveHeader
{
    char riff[4] = {};
    std::uint32_t length = 0; // bytes, wraps at 4 GiB
    char wavefmt[8] = {};
    std::uint32_t formatSize = 0; // bytes of the seven fields up to bitsPerSample
    std::uint16_t formatTag = 0;  // 1: integers
    std::uint16_t channels = 0;
    std::uint32_t sampleRate = 0; // Hz
    std::uint32_t bytesPerSecond = 0;
    std::uint16_t blockAlign = 0;    // bytes per IQ sample
    std::uint16_t bitsPerSample = 0; // of one channel
    char nextId[4] = {};
    std::uint32_t nextSize = 0; // bytes
};
static_assert(sizeof(WaveHeader) == 44 && offsetof(WaveHeader, nextId) == 36);
} // namespace vm::file
