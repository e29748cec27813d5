// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/containers/RingCore.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstddef>
#include <mutex>
#include <vector>

/// A sliding window over a stream: new elements replace the oldest, nothing is ever refused.
///
/// Any thread may call any operation; each holds the mutex once. A reader that asks for the whole
/// size sees the whole window, oldest element first. Only resize() allocates. A fresh window has
/// size 0 and takes nothing.
template <typename T>
class AccumulatedBuffer
{
public:
    /// The size becomes n rounded up to a power of two, at least 64. A new size starts the window
    /// at its first element; asking for the present size changes nothing.
    void resize(int n)
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        if (n == m_size)
            return;
        m_size = static_cast<int>(std::bit_ceil(static_cast<unsigned int>(std::max(n, kSmallest))));
        m_mask = m_size - 1;
        m_write = 0;
        m_read = 0;
        m_storage.resize(static_cast<std::size_t>(m_size));
    }

    /// Appends n elements. Of a block longer than the size the last ones stay.
    void append(const T *data, int n)
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        if (n <= 0 || m_size == 0)
            return;
        // Elements that the tail of the same block would overwrite only move the index.
        const int skipped = std::max(n - m_size, 0);
        const int start = (m_write + skipped) & m_mask;
        const int kept = n - skipped;
        vm::containers::copyIntoRing(m_storage.data(), m_storage.size(), std::size_t(start),
            data + skipped, std::size_t(kept));
        m_write = (start + kept) & m_mask;
        if (m_write == m_read)
            m_full = true;
    }

    /// Reads n elements, 0..size(), from the oldest on. The window keeps them.
    void read(T *data, int n)
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        assert(n >= 0 && n <= m_size);
        m_read = m_write;
        vm::containers::copyOutOfRing(m_storage.data(), m_storage.size(),
            static_cast<std::size_t>(m_read), data, static_cast<std::size_t>(n));
        m_read = (m_read + n) & m_mask;
    }

    /// Starts again at the first element. The elements stay until they are overwritten.
    void clear()
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_write = 0;
        m_read = 0;
    }

    int size() const
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        return m_size;
    }

    /// True once a block has ended where the last read left off.
    bool full() const
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        return m_full;
    }

private:
    static constexpr int kSmallest = 64;

    mutable std::mutex m_mutex;

    // All guarded by m_mutex.
    std::vector<T> m_storage;
    int m_size = 0;
    int m_mask = 0;
    int m_write = 0;
    int m_read = 0;
    bool m_full = false;
};
