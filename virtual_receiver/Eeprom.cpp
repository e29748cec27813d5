// SPDX-License-Identifier: GPL-3.0-or-later
#include "Eeprom.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace vr
{
namespace
{
// CRC-32 in its common reflected form (as in Ethernet), bit by bit: 32 bytes need no table.
std::uint32_t crc32(const std::uint8_t *data, std::size_t length)
{
    std::uint32_t crc = 0xffffffff;
    for (std::size_t i = 0; i < length; ++i) {
        crc ^= data[i];
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xedb88320 : 0);
    }
    return ~crc;
}

std::vector<std::uint8_t> defaultArea()
{
    constexpr double kNeutral[4] = {0.0, 1.0, 0.0, 1.0}; // dB, factor, dB, factor
    constexpr std::uint8_t kErased = 0xff;
    std::vector<std::uint8_t> bytes(Eeprom::kDefaultSize, kErased);
    std::memcpy(bytes.data(), kNeutral, sizeof kNeutral);
    const std::uint32_t crc = crc32(bytes.data(), sizeof kNeutral);
    std::memcpy(bytes.data() + sizeof kNeutral, &crc, sizeof crc);
    return bytes;
}
} // namespace

Eeprom::Eeprom() : m_bytes(defaultArea()) { }

bool Eeprom::useFile(const std::string &path, std::string &error)
{
    Eeprom next;
    next.m_path = path;
    if (!path.empty() && std::filesystem::exists(path)) {
        std::ifstream file(path, std::ios::binary);
        next.m_bytes.assign(std::istreambuf_iterator<char>(file), {});
        if (!file.is_open() || file.bad()) {
            error = path + ": cannot read the EEPROM file";
            return false;
        }
        if (next.m_bytes.size() > kMaxSize) {
            error = path + ": " + std::to_string(next.m_bytes.size())
                + " bytes are more than an EEPROM user area holds (1024)";
            return false;
        }
    } else if (!next.save(error)) {
        return false;
    }
    *this = next;
    return true;
}

bool Eeprom::replace(const std::uint8_t *bytes, std::size_t size, std::string &error)
{
    if (size > kMaxSize) {
        error = "EEPROM user area of " + std::to_string(size) + " bytes: at most 1024";
        return false;
    }
    m_bytes.assign(bytes, bytes + size);
    return save(error);
}

bool Eeprom::write(const std::uint8_t *bytes, std::size_t size)
{
    if (size > m_bytes.size())
        return false;
    std::copy_n(bytes, size, m_bytes.begin());
    std::string error;
    return save(error);
}

bool Eeprom::save(std::string &error) const
{
    if (m_path.empty())
        return true;
    std::ofstream file(m_path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char *>(m_bytes.data()), std::streamsize(m_bytes.size()));
    file.close();
    if (file)
        return true;
    error = m_path + ": cannot write the EEPROM file";
    return false;
}
} // namespace vr
