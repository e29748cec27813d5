// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/file/Time.h"

#include <cstddef>

namespace vm::file
{
/// The body of the metadata chunk "vsdr", without gaps.
struct VsdrHeader
{
    std::uint32_t version = 0;
    Time start;
    Time stop;
    std::uint32_t reserved = 0;
    double frequency = 0.0;  // Hz
    double sampleRate = 0.0; // Hz
    double preamp = 0.0;     // dB
};
static_assert(sizeof(VsdrHeader) == 64 && offsetof(VsdrHeader, frequency) == 40);
} // namespace vm::file
