// SPDX-License-Identifier: GPL-3.0-or-later
#include "Eeprom.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace vr
{
namespace
{
namespace fs = std::filesystem;

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
/// Puts a whole file beside the old one and then in its place, so that whatever happens on the way
/// (a full disk, a crash) the old content is there or the new one. A link stays a link.
bool replaceFile(const fs::path &path, const std::vector<std::uint8_t> &bytes)
{
    std::error_code failed;
    const fs::path target = fs::weakly_canonical(path, failed);
    if (failed)
        return false;
    constexpr mode_t kNewFileMode = 0644;
    struct stat old = {};
    const mode_t mode = stat(target.c_str(), &old) == 0 ? old.st_mode & 0777 : kNewFileMode;

    std::string beside = target.string() + ".XXXXXX";
    const int file = mkstemp(beside.data());
    if (file < 0)
        return false;
    // In this order, so that errno is of the first that fails.
    bool good = ::write(file, bytes.data(), bytes.size()) == ssize_t(bytes.size())
        && fchmod(file, mode) == 0 && fsync(file) == 0;
    good = good && std::rename(beside.c_str(), target.c_str()) == 0;
    const int reason = errno;
    ::close(file);
    if (!good)
        unlink(beside.c_str());
    errno = reason;
    return good;
}
} // namespace

Eeprom::Eeprom() : m_bytes(defaultArea()) { }

bool Eeprom::useFile(const std::string &path, std::string &error)
{
    Eeprom next;
    next.m_path = path;
    const bool there = !path.empty() && fs::exists(path);
    if (there ? !next.load(error) : !next.save(next.m_bytes, error))
        return false;
    *this = std::move(next);
    return true;
}

bool Eeprom::replace(const std::uint8_t *bytes, std::size_t size, std::string &error)
{
    if (size > kMaxSize) {
        error = "EEPROM user area of " + std::to_string(size) + " bytes: at most 1024";
        return false;
    }
    return save({bytes, bytes + size}, error);
}

bool Eeprom::write(const std::uint8_t *bytes, std::size_t size)
{
    if (size > m_bytes.size())
        return false;
    auto next = m_bytes;
    std::copy_n(bytes, size, next.begin());
    std::string error;
    if (save(std::move(next), error))
        return true;
    // The function that was called has only a number for it.
    std::fprintf(stderr, "virtual receiver: %s\n", error.c_str());
    return false;
}

bool Eeprom::load(std::string &error)
{
    std::ifstream file(m_path, std::ios::binary);
    m_bytes.assign(kMaxSize + 1, 0);
    file.read(reinterpret_cast<char *>(m_bytes.data()), std::streamsize(m_bytes.size()));
    m_bytes.resize(std::size_t(file.gcount()));
    if (!file.is_open() || file.bad())
        error = m_path + ": cannot read the EEPROM file";
    else if (m_bytes.empty())
        error = m_path + ": the EEPROM file is empty; remove it to get a default one";
    else if (m_bytes.size() > kMaxSize)
        error = m_path + ": more bytes than an EEPROM user area holds (1024)";
    else
        return true;
    return false;
}

bool Eeprom::save(std::vector<std::uint8_t> bytes, std::string &error)
{
    if (!m_path.empty() && !replaceFile(m_path, bytes)) {
        error = m_path + ": cannot write the EEPROM file: " + std::strerror(errno);
        return false;
    }
    m_bytes = std::move(bytes);
    return true;
}
} // namespace vr
