// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bit>
#include <cstdint>

namespace vm::file
{
static_assert(std::endian::native == std::endian::little, "the records of a file lie as in memory");

/// A moment as a recording's header holds it: local time, eight little-endian 16-bit fields.
struct Time
{
    std::uint16_t year = 0;
    std::uint16_t month = 0;     // 1..12
    std::uint16_t dayOfWeek = 0; // 1 Monday .. 7 Sunday
    std::uint16_t day = 0;       // 1..31
    std::uint16_t hour = 0;
    std::uint16_t minute = 0;
    std::uint16_t second = 0;
    std::uint16_t millisecond = 0;

    /// Now, in local time.
    static Time currentDateTime();
};
static_assert(sizeof(Time) == 16);
} // namespace vm::file
