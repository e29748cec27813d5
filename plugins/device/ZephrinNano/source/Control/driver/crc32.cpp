// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/driver/crc32.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace
{
constexpr std::uint32_t kPolynomial = 0xEDB88320; // x^32 + x^26 + ... + 1, lowest power on top

// Entry n is the remainder of the byte n followed by 32 zero bits.
constexpr std::array<std::uint32_t, 256> CrcTable = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t remainder = byte;
        for (int bit = 0; bit < 8; ++bit)
            remainder = (remainder >> 1) ^ ((remainder & 1) ? kPolynomial : 0);
        table[byte] = remainder;
    }
    return table;
}();
} // namespace

unsigned int crc32(unsigned char *data, unsigned int length)
{
    std::uint32_t crc = 0xFFFFFFFF;
    for (unsigned int i = 0; i < length; ++i)
        crc = (crc >> 8) ^ CrcTable[(crc ^ data[i]) & 0xFF];
    return ~crc;
}
