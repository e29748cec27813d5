// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace d2xx
{
struct Chip;

/// The content of a chip's EEPROM: 16-bit words, the last of them a checksum over those before.
///
///     byte 0            p        p + l + 2                       2W - 4      2W - 2
///     chip's settings | strings | user area                     | (left alone) | checksum
///
/// Word 9 holds length l and byte offset p of the serial number's descriptor (l << 8 | p), the last
/// of the strings; a word of the chip's settings tells which EEPROM is fitted and with it the
/// number W of words that the chip uses. Not thread-safe.
class EepromImage
{
public:
    static constexpr std::size_t kMostWords = 128;

    EepromImage() = default;
    explicit EepromImage(std::vector<std::uint16_t> words) : m_words(std::move(words)) { }

    /// W by the word at Chip::eepromTypeWord: 64 or 128, 0 for an EEPROM of another kind or a blank
    /// one.
    static std::size_t wordCount(std::uint16_t typeWord);

    const std::vector<std::uint16_t> &words() const { return m_words; }

    /// Start and size of the user area in bytes; nothing if the serial number's descriptor leaves
    /// no room for one.
    struct Area
    {
        std::size_t start = 0;
        std::size_t size = 0;
    };
    std::optional<Area> userArea() const;

    std::vector<std::uint8_t> bytes(std::size_t start, std::size_t size) const;

    /// Puts bytes in their place and renews the checksum.
    void setBytes(std::size_t start, std::span<const std::uint8_t> data);

    /// Start 0xAAAA; for each word but the last: exclusive or, then one bit round to the left.
    std::uint16_t checksum() const;
    bool checksumHolds() const { return !m_words.empty() && m_words.back() == checksum(); }

    /// Offset of a receiver's calibration page in bytes: 32 bytes and their CRC-32, whatever they
    /// hold; the first from a byte on. A page of zeros or ones has no right CRC.
    std::optional<std::size_t> findCalibration(std::size_t from = 0) const;

private:
    std::vector<std::uint16_t> m_words;
};

/// CRC-32 in its common reflected form (polynomial 0xEDB88320, as in Ethernet and zip).
std::uint32_t crc32(std::span<const std::uint8_t> data);
} // namespace d2xx
