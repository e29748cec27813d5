// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"

#include <cstdlib>

namespace
{
// A cache line, and the widest vector of the processor.
constexpr std::size_t kAlignment = 64;

template <typename T>
T *allocate(int len)
{
    if (len < 1)
        return nullptr;
    const std::size_t bytes = static_cast<std::size_t>(len) * sizeof(T);
    // aligned_alloc wants whole multiples of the alignment.
    const std::size_t rounded = (bytes + kAlignment - 1) / kAlignment * kAlignment;
    return static_cast<T *>(std::aligned_alloc(kAlignment, rounded));
}
} // namespace

Ipp8u *ippsMalloc_8u(int len)
{
    return allocate<Ipp8u>(len);
}

Ipp32f *ippsMalloc_32f(int len)
{
    return allocate<Ipp32f>(len);
}

Ipp32fc *ippsMalloc_32fc(int len)
{
    return allocate<Ipp32fc>(len);
}

Ipp64f *ippsMalloc_64f(int len)
{
    return allocate<Ipp64f>(len);
}

Ipp64fc *ippsMalloc_64fc(int len)
{
    return allocate<Ipp64fc>(len);
}

void ippsFree(void *ptr)
{
    std::free(ptr);
}
