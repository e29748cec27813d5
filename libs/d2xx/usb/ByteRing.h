// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace d2xx
{
/// Bytes in the order in which they came, up to a fixed number. Not thread-safe; allocates nothing
/// after its construction.
class ByteRing
{
public:
    explicit ByteRing(std::size_t capacity) : m_bytes(capacity) { }

    std::size_t capacity() const { return m_bytes.size(); }
    std::size_t size() const { return m_size; }
    std::size_t free() const { return m_bytes.size() - m_size; }

    /// As many as there is room for; the number taken.
    std::size_t write(const std::uint8_t *data, std::size_t size);

    /// As many as there are; the number given.
    std::size_t read(std::uint8_t *data, std::size_t size);

    void clear() { m_start = m_size = 0; }

private:
    std::vector<std::uint8_t> m_bytes;
    std::size_t m_start = 0;
    std::size_t m_size = 0;
};
} // namespace d2xx
