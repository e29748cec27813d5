// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>

/// The bytes of the counting stream from a position on: 0, 1, 2 ... as 64-bit words of a
/// little-endian machine.
inline void countFrom(std::uint64_t position, std::span<std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const std::uint64_t word = position / 8;
        const std::size_t skipped = position % 8;
        const std::size_t size = std::min(sizeof word - skipped, bytes.size());
        std::memcpy(bytes.data(), reinterpret_cast<const std::uint8_t *>(&word) + skipped, size);
        bytes = bytes.subspan(size);
        position += size;
    }
}
