// SPDX-License-Identifier: GPL-3.0-or-later
#include "SampleFormat.h"

#include <cstring>

namespace vr
{
namespace
{
template <typename Number>
void convertAs(const std::uint8_t *bytes, double scale, Sample *out, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        Number iq[2];
        std::memcpy(iq, bytes + i * sizeof iq, sizeof iq);
        out[i] = {double(iq[0]) * scale, double(iq[1]) * scale};
    }
}

double component24(const std::uint8_t *bytes)
{
    const auto word = std::uint32_t(bytes[0]) << 8 | std::uint32_t(bytes[1]) << 16
        | std::uint32_t(bytes[2]) << 24;
    return double(std::int32_t(word) >> 8) / 8388607.0;
}
} // namespace

std::size_t bytesPerComponent(SampleFormat format)
{
    constexpr std::size_t kBytes[] = {1, 2, 3, 4, 4, 8};
    return kBytes[int(format)];
}

void convert(SampleFormat format, const std::uint8_t *bytes, Sample *out, std::size_t count)
{
    switch (format) {
    case SampleFormat::U8:
        for (std::size_t i = 0; i < count; ++i)
            out[i] = {(bytes[2 * i] - 127.5) / 127.5, (bytes[2 * i + 1] - 127.5) / 127.5};
        break;
    case SampleFormat::S16:
        convertAs<std::int16_t>(bytes, 1.0 / 32768.0, out, count);
        break;
    case SampleFormat::S24:
        for (std::size_t i = 0; i < count; ++i)
            out[i] = {component24(bytes + 6 * i), component24(bytes + 6 * i + 3)};
        break;
    case SampleFormat::S32:
        convertAs<std::int32_t>(bytes, 1.0 / 2147483648.0, out, count);
        break;
    case SampleFormat::F32:
        convertAs<float>(bytes, 1.0, out, count);
        break;
    case SampleFormat::F64:
        convertAs<double>(bytes, 1.0, out, count);
        break;
    }
}

std::optional<SampleFormat> rawFormat(std::string_view name)
{
    if (name.starts_with('c')) // "cf32": complex, as all are here
        name.remove_prefix(1);
    if (name == "u8")
        return SampleFormat::U8;
    if (name == "s16")
        return SampleFormat::S16;
    if (name == "f32")
        return SampleFormat::F32;
    if (name == "f64")
        return SampleFormat::F64;
    return std::nullopt;
}
} // namespace vr
