// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

/// A stream as the receiver sends it, whose samples carry their own number: I is the number n, Q is
/// n with each byte changed by a key of its own, 24 bits each. No part of it looks like a marker
/// (n stays below 0x550000), and a sample read from the wrong byte does not fit together, whatever
/// the shift, so every sample can be told right or wrong.
namespace test
{
constexpr std::size_t kFrame = 512;
constexpr std::size_t kFrameSamples = 84;
constexpr std::uint32_t kKey = 0x96C3A5;

inline void appendFrame(
    std::vector<int8_t> &stream, std::uint32_t firstNumber, std::uint16_t peak = 0)
{
    const auto put = [&](std::uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i)
            stream.push_back(int8_t(value >> (8 * i)));
    };
    put(0x55555555, 4);
    put(0x01, 1);
    put(0xEE, 1); // a byte without a meaning
    put(peak, 2);
    for (std::uint32_t n = firstNumber; n < firstNumber + kFrameSamples; ++n) {
        put(n, 3);
        put(n ^ kKey, 3);
    }
}

inline std::vector<int8_t> frames(
    std::size_t count, std::uint32_t firstNumber = 0, std::uint16_t peak = 0)
{
    std::vector<int8_t> stream;
    stream.reserve(count * kFrame);
    for (std::size_t f = 0; f < count; ++f)
        appendFrame(stream, firstNumber + std::uint32_t(f * kFrameSamples), peak);
    return stream;
}

/// The number that a sample of such a stream carries, or -1 for a sample that is not in one piece.
/// gain: what the samples were multiplied with.
template <typename Complex>
long long sampleNumber(const Complex &sample, double gain = 1.0)
{
    constexpr double kCodes = 8388607.0; // the code of 1.0
    const auto n = std::llround(sample.re / gain * kCodes);
    const auto q = std::llround(sample.im / gain * kCodes);
    return n >= 0 && ((n ^ q) & 0xffffff) == kKey ? n : -1;
}
} // namespace test
