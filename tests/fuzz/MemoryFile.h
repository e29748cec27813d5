// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <span>
#include <string>

namespace fuzz
{
/// A file that is nowhere but in memory, for what takes the name of a file.
class MemoryFile
{
public:
    MemoryFile() : m_file(memfd_create("fuzz", MFD_CLOEXEC)) { }
    ~MemoryFile() { close(m_file); }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(m_file); }

    bool set(std::span<const std::uint8_t> bytes)
    {
        return ftruncate(m_file, 0) == 0
            && pwrite(m_file, bytes.data(), bytes.size(), 0) == ssize_t(bytes.size());
    }

private:
    const int m_file;
};
} // namespace fuzz
