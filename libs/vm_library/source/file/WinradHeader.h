// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/file/Time.h"

#include <cstddef>

namespace vm::file
{
/// The body of the metadata chunk "auxi", without gaps.
struct WinradHeader
{
    Time start;
    Time stop;
    std::uint32_t frequency = 0; // Hz
    unsigned char reserved[128] = {};
};
static_assert(sizeof(WinradHeader) == 164 && offsetof(WinradHeader, reserved) == 36);
} // namespace vm::file
