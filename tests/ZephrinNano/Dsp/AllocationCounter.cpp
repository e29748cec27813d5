// SPDX-License-Identifier: GPL-3.0-or-later
#include "AllocationCounter.h"

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)

bool test::countsAllocations()
{
    return false;
}

long test::allocationsOfThisThread()
{
    return 0;
}

#else

namespace
{
thread_local long count = 0;
} // namespace

// The C library keeps its allocator reachable under these names for whoever replaces the public
// ones, as this program does to count. Others find them only if they are not hidden.
#pragma GCC visibility push(default)
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t items, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void *__libc_memalign(std::size_t alignment, std::size_t size);

void *malloc(std::size_t size)
{
    ++count;
    return __libc_malloc(size);
}

void *calloc(std::size_t items, std::size_t size)
{
    ++count;
    return __libc_calloc(items, size);
}

void *realloc(void *block, std::size_t size)
{
    ++count;
    return __libc_realloc(block, size);
}

void *aligned_alloc(std::size_t alignment, std::size_t size)
{
    ++count;
    return __libc_memalign(alignment, size);
}

void *memalign(std::size_t alignment, std::size_t size)
{
    ++count;
    return __libc_memalign(alignment, size);
}

int posix_memalign(void **block, std::size_t alignment, std::size_t size)
{
    ++count;
    *block = __libc_memalign(alignment, size);
    return *block ? 0 : 12; // ENOMEM
}
}
#pragma GCC visibility pop

bool test::countsAllocations()
{
    return true;
}

long test::allocationsOfThisThread()
{
    return count;
}

#endif
