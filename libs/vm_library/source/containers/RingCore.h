// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>

/// The arithmetic that all rings share. A block lies in a ring in one run, or in two when it passes
/// the end of the storage:
///
///     storage  |2222......1111|      index points at the first 1
///
/// The caller holds the ring's lock.
namespace vm::containers
{
/// count is at most capacity and index is below it.
template <typename T>
void copyIntoRing(
    T *storage, std::size_t capacity, std::size_t index, const T *source, std::size_t count)
{
    const std::size_t first = std::min(count, capacity - index);
    std::copy_n(source, first, storage + index);
    std::copy_n(source + first, count - first, storage);
}

template <typename T>
void copyOutOfRing(
    const T *storage, std::size_t capacity, std::size_t index, T *target, std::size_t count)
{
    const std::size_t first = std::min(count, capacity - index);
    std::copy_n(storage + index, first, target);
    std::copy_n(storage, count - first, target + first);
}

/// One operation on a ring that passes blocks on whole or not at all: a look at the members of the
/// ring that calls, which keep their places as each ring is known by its own layout.
///
/// Index is the type of the indices, Count that of stored and free, which may be atomic; they move
/// before the elements do. Wrap brings an index back below the capacity.
template <typename Index, typename Count, typename Wrap>
struct RingCore
{
    Index capacity;
    Index &read;
    Index &write;
    Count &stored;
    Count &free;
    Wrap wrap;

    /// Stores n elements; false, and nothing changes, when n is 0 or above the free count.
    template <typename T>
    bool put(T *storage, const T *data, Index n)
    {
        if (n == 0 || n > free)
            return false;
        stored += n;
        free -= n;
        copyIntoRing(storage, capacity, write, data, n);
        write = wrap(write + n);
        return true;
    }

    /// Takes the n oldest elements; false, and nothing changes, when n is 0 or above the stored
    /// count.
    template <typename T>
    bool take(const T *storage, T *data, Index n)
    {
        if (n == 0 || n > stored)
            return false;
        stored -= n;
        free += n;
        copyOutOfRing(storage, capacity, read, data, n);
        read = wrap(read + n);
        return true;
    }

    /// Drops what is stored.
    void clear()
    {
        read = 0;
        write = 0;
        stored = 0;
        free = capacity;
    }
};

/// For a capacity that is a power of two; mask is one less.
template <typename Index, typename Count>
auto maskedRing(Index capacity, Index mask, Index &read, Index &write, Count &stored, Count &free)
{
    const auto wrap = [mask](Index index) { return index & mask; };
    return RingCore<Index, Count, decltype(wrap)>{capacity, read, write, stored, free, wrap};
}

/// For any capacity.
template <typename Index, typename Count>
auto moduloRing(Index capacity, Index &read, Index &write, Count &stored, Count &free)
{
    const auto wrap = [capacity](Index index) { return index % capacity; };
    return RingCore<Index, Count, decltype(wrap)>{capacity, read, write, stored, free, wrap};
}
} // namespace vm::containers
