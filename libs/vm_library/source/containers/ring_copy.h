// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>

/// The copy that all rings share. A block lies in a ring in one run, or in two when it passes the
/// end of the storage:
///
///     storage  |2222......1111|      index points at the first 1
///
/// count is at most capacity and index is below it; the caller holds the ring's lock.
namespace vm::containers
{
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
} // namespace vm::containers
