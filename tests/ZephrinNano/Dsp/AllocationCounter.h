// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace test
{
/// False in a sanitizer build, which has an allocator of its own.
bool countsAllocations();

/// Heap requests of the calling thread since it started, from any code: malloc and all that is
/// built on it, aligned requests included.
long allocationsOfThisThread();
} // namespace test
