// SPDX-License-Identifier: GPL-3.0-or-later
#include "d2xx/usb/EepromImage.h"

#include <bit>

namespace d2xx
{
namespace
{
constexpr std::uint16_t kChecksumStart = 0xaaaa;
constexpr std::size_t kSerialWord = 9;
constexpr std::size_t kPageBytes = 32; // before their CRC
constexpr std::size_t kCrcBytes = 4;
} // namespace

std::size_t EepromImage::wordCount(std::uint16_t typeWord)
{
    switch (typeWord & 0xff) {
    case 0x46:
        return 64;
    case 0x56:
    case 0x66:
        return 128;
    default:
        return 0;
    }
}

std::optional<EepromImage::Area> EepromImage::userArea() const
{
    if (m_words.size() <= kSerialWord)
        return std::nullopt;
    const std::size_t total = 2 * m_words.size();
    const std::size_t length = m_words[kSerialWord] >> 8;
    // The offset counts within the EEPROM; on the small one its highest bit is set all the same.
    const std::size_t offset = (m_words[kSerialWord] & 0xff) % total;
    if (offset == 0 || offset + length + 6 >= total)
        return std::nullopt;
    return Area{offset + length + 2, total - offset - length - 6};
}

std::vector<std::uint8_t> EepromImage::bytes(std::size_t start, std::size_t size) const
{
    std::vector<std::uint8_t> result(size);
    for (std::size_t i = 0; i < size; ++i)
        result[i] = std::uint8_t(m_words[(start + i) / 2] >> (start + i) % 2 * 8);
    return result;
}

void EepromImage::setBytes(std::size_t start, std::span<const std::uint8_t> data)
{
    for (std::size_t i = 0; i < data.size(); ++i) {
        const std::size_t shift = (start + i) % 2 * 8;
        std::uint16_t &word = m_words[(start + i) / 2];
        word = std::uint16_t((word & ~(0xff << shift)) | data[i] << shift);
    }
    m_words.back() = checksum();
}

std::uint16_t EepromImage::checksum() const
{
    std::uint16_t sum = kChecksumStart;
    for (std::size_t i = 0; i + 1 < m_words.size(); ++i)
        sum = std::rotl(std::uint16_t(sum ^ m_words[i]), 1);
    return sum;
}

std::optional<std::size_t> EepromImage::findCalibration(std::size_t from) const
{
    const std::vector<std::uint8_t> all = bytes(0, 2 * m_words.size());
    const std::span<const std::uint8_t> image(all);
    for (std::size_t at = from; at + kPageBytes + kCrcBytes <= image.size(); ++at) {
        std::uint32_t stored = 0;
        for (std::size_t i = 0; i < kCrcBytes; ++i)
            stored |= std::uint32_t(image[at + kPageBytes + i]) << 8 * i;
        if (crc32(image.subspan(at, kPageBytes)) == stored)
            return at;
    }
    return std::nullopt;
}

std::uint32_t crc32(std::span<const std::uint8_t> data)
{
    std::uint32_t crc = 0xffffffff;
    for (const std::uint8_t byte : data) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xedb88320 : 0);
    }
    return ~crc;
}
} // namespace d2xx
