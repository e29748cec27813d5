// SPDX-License-Identifier: GPL-3.0-or-later
#include "d2xx/usb/ByteRing.h"

#include <algorithm>

namespace d2xx
{
std::size_t ByteRing::write(const std::uint8_t *data, std::size_t size)
{
    size = std::min(size, free());
    const std::size_t end = (m_start + m_size) % capacity();
    const std::size_t first = std::min(size, capacity() - end);
    std::copy_n(data, first, m_bytes.begin() + std::ptrdiff_t(end));
    std::copy_n(data + first, size - first, m_bytes.begin());
    m_size += size;
    return size;
}

std::size_t ByteRing::read(std::uint8_t *data, std::size_t size)
{
    size = std::min(size, m_size);
    const std::size_t first = std::min(size, capacity() - m_start);
    std::copy_n(m_bytes.begin() + std::ptrdiff_t(m_start), first, data);
    std::copy_n(m_bytes.begin(), size - first, data + first);
    m_start = (m_start + size) % capacity();
    m_size -= size;
    return size;
}
} // namespace d2xx
