// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <numeric>
#include <vector>

/// The sum that the last word of an EEPROM is to hold.
inline std::uint16_t eepromChecksum(const std::vector<std::uint16_t> &words)
{
    unsigned sum = 0xaaaa;
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        sum ^= words[i];
        sum = (sum << 1 | sum >> 15) & 0xffff;
    }
    return std::uint16_t(sum);
}

/// A small EEPROM of a chip that has its strings: the user area starts at byte 88.
inline std::vector<std::uint16_t> programmedEeprom()
{
    std::vector<std::uint16_t> words(64);
    std::iota(words.begin(), words.end(), std::uint16_t(0x0100));
    words[9] = 14 << 8 | (72 | 0x80);
    words[15] = 0x46;
    words.back() = eepromChecksum(words);
    return words;
}
