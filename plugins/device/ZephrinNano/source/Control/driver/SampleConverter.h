// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

/// Turns the components of stream samples (little-endian, two's complement) into doubles.
///
/// A component is set into the upper bytes of a signed 32-bit integer, the bytes below stay zero,
/// and the integer times the scale is the value: the largest positive code gives exactly 1.0. The
/// integer is exact in a double, so every form of the conversion gives the same bits. The value is
/// then multiplied by a gain, here and not in a pass of its own, as what leaves the cache has to
/// come back.
///
/// Pure functions, any thread, no allocation.
class SampleConverter
{
public:
    static constexpr double kScale24 = 4.656613428188971e-10; // 1 / 2147483392, code 0x7FFFFF
    static constexpr double kScale16 = 4.656754985961486e-10; // 1 / 2147418112, code 0x7FFF
    static constexpr std::size_t kBytes24 = 3;
    static constexpr std::size_t kBytes16 = 2;

    /// Reads 3 * count bytes and writes count doubles, by the fastest form that the CPU has.
    static void from24(
        const std::uint8_t *bytes, std::size_t count, double *out, double gain = 1.0);

    /// The same, one component at a time: the fallback, and the yardstick of the fast form.
    static void from24Plain(
        const std::uint8_t *bytes, std::size_t count, double *out, double gain = 1.0);

    /// Reads 2 * count bytes and writes count doubles.
    static void from16(
        const std::uint8_t *bytes, std::size_t count, double *out, double gain = 1.0);
};
