// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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
        append(n, [data](T *run, int first, int count) { std::copy_n(data + first, count, run); });
    }

    /// The same for elements that fill(T *run, int first, int count) makes in their places: run[0]
    /// on becomes the block's elements first to first + count - 1.
    template <typename Fill>
    void append(int n, Fill fill)
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        if (n <= 0 || m_size == 0)
            return;
        // Elements that the tail of the same block would overwrite only move the index.
        const int skipped = std::max(n - m_size, 0);
        const int start = (m_write + skipped) & m_mask;
        const int kept = n - skipped;
        inRuns(
            start, kept, [&](T *run, int first, int count) { fill(run, skipped + first, count); });
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
        inRuns(m_read, n,
            [data](const T *run, int first, int count) { std::copy_n(run, count, data + first); });
        m_read = (m_read + n) & m_mask;
    }

    /// Reads the whole window where it stands: use(const T *ring, int oldest) gets size() elements,
    /// of which the oldest is ring[oldest] and the one after the last of the ring is its first.
    template <typename Use>
    void read(Use use)
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_read = m_write;
        use(static_cast<const T *>(m_storage.data()), m_read);
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

    /// Calls with the one or two runs of the ring that n elements from `start` on lie in.
    template <typename Call>
    void inRuns(int start, int n, Call call)
    {
        const int before = std::min(n, m_size - start); // the end
        if (before > 0)
            call(m_storage.data() + start, 0, before);
        if (before < n)
            call(m_storage.data(), before, n - before);
    }

    mutable std::mutex m_mutex;

    // All guarded by m_mutex.
    std::vector<T> m_storage;
    int m_size = 0;
    int m_mask = 0;
    int m_write = 0;
    int m_read = 0;
    bool m_full = false;
};
