// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vr
{
/// The user area of the USB chip's EEPROM, in memory or kept in a file. Its first 36 bytes are the
/// calibration page: user level (dB), user frequency factor, admin level, admin frequency factor as
/// little-endian doubles, then their CRC-32.
///
/// Not thread-safe; the owner serialises all calls.
class Eeprom
{
public:
    static constexpr std::size_t kDefaultSize = 64;
    static constexpr std::size_t kMaxSize = 1024;

    Eeprom();

    const std::vector<std::uint8_t> &bytes() const { return m_bytes; }

    /// Keeps the area in a file from now on: its content (1 to kMaxSize bytes) is taken, or a
    /// default area written to it if it is not there. An empty path goes back to memory with
    /// default content. False with a reason in error; then nothing changes.
    bool useFile(const std::string &path, std::string &error);

    /// Replaces the whole area; its size becomes the given one, at most kMaxSize. False with a
    /// reason in error if it is larger or the file cannot be written; then nothing changes.
    bool replace(const std::uint8_t *bytes, std::size_t size, std::string &error);

    /// Writes at the start of the area; false if it does not fit or the file cannot be written,
    /// and then nothing changes.
    bool write(const std::uint8_t *bytes, std::size_t size);

private:
    bool load(std::string &error);
    bool save(std::vector<std::uint8_t> bytes, std::string &error);

    std::vector<std::uint8_t> m_bytes;
    std::string m_path; // empty: memory only
};
} // namespace vr
