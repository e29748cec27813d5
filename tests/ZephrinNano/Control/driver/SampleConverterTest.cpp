// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/driver/SampleConverter.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace
{
// Codes of 24 bits are fractions of 2^23 - 1, those of 16 bits of 2^15 - 1.
TEST(SampleConverterTest, LargestPositiveCodeIsOneAndTheSignIsKept)
{
    constexpr double kRounding = 1e-15; // the scales have 16 digits
    const struct
    {
        std::vector<std::uint8_t> bytes;
        double value;
    } rows[] = {{{0xff, 0xff, 0x7f}, 1.0}, {{0x00, 0x00, 0x80}, -8388608.0 / 8388607.0},
        {{0xff, 0xff, 0xff}, -1.0 / 8388607.0}, {{0x56, 0x34, 0x12}, 1193046.0 / 8388607.0},
        {{0xff, 0x7f}, 1.0}, {{0x00, 0x80}, -32768.0 / 32767.0}, {{0xff, 0xff}, -1.0 / 32767.0},
        {{0x34, 0x12}, 4660.0 / 32767.0}};
    for (const auto &[bytes, expected] : rows) {
        double value = 0.0;
        bytes.size() == 3 ? SampleConverter::from24(bytes.data(), 1, &value)
                          : SampleConverter::from16(bytes.data(), 1, &value);
        EXPECT_NEAR(value, expected, kRounding);
    }
}

// Buffers end with the last component, so that a sanitizer sees a load or a store after them.
TEST(SampleConverterTest, FastFormGivesTheBitsOfThePlainOneAtEveryLength)
{
    std::mt19937 random(3);
    for (std::size_t count = 0; count < 200; ++count) {
        std::vector<std::uint8_t> bytes(3 * count);
        for (auto &byte : bytes)
            byte = std::uint8_t(random());
        std::vector<double> fast(count), plain(count);
        SampleConverter::from24(bytes.data(), count, fast.data());
        SampleConverter::from24Plain(bytes.data(), count, plain.data());
        ASSERT_EQ(fast, plain) << count;
    }
}
} // namespace
