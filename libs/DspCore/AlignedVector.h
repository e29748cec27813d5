// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <new>
#include <vector>

namespace DspCore
{
/// Allocates on cache-line boundaries, which is also the width of the widest vector register, so
/// that transforms and vector loops run on whole lines.
template <typename T>
struct AlignedAllocator
{
    using value_type = T;
    static constexpr std::align_val_t kAlignment{64};

    AlignedAllocator() = default;
    template <typename U>
    AlignedAllocator(const AlignedAllocator<U> &)
    { }

    T *allocate(std::size_t count)
    {
        return static_cast<T *>(::operator new(count * sizeof(T), kAlignment));
    }
    void deallocate(T *array, std::size_t) { ::operator delete(array, kAlignment); }

    friend bool operator==(const AlignedAllocator &, const AlignedAllocator &) { return true; }
};

template <typename T>
using AlignedVector = std::vector<T, AlignedAllocator<T>>;
} // namespace DspCore
