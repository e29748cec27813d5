// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scenes/Scene.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace vr
{
/// How a recording stores a component of a sample. All are little-endian with full scale 1.0; u8 is
/// offset binary around 127.5.
enum class SampleFormat { U8, S16, S24, S32, F32, F64 };

std::size_t bytesPerComponent(SampleFormat format);

/// Converts interleaved I, Q to samples. A 24-bit code is the fraction of the largest code, as on
/// the air interface, so that such a recording passes the device code for code; 16 and 32 bits are
/// fractions of a power of two.
void convert(SampleFormat format, const std::uint8_t *bytes, Sample *out, std::size_t count);

/// Of a raw recording's format name or file name extension: "f64", "cf32", "s16", "cu8"...
std::optional<SampleFormat> rawFormat(std::string_view name);
} // namespace vr
