// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/driver/FrameParser.h"

#include <bit>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace
{
constexpr std::uint8_t kRun = 0x55; // four of these,
constexpr std::uint8_t kEnd = 0x01; // then this: the marker
constexpr std::size_t kMarkerBytes = 5;

bool isMarker(const std::uint8_t *bytes)
{
    constexpr std::uint8_t kMarker[kMarkerBytes] = {kRun, kRun, kRun, kRun, kEnd};
    return std::memcmp(bytes, kMarker, kMarkerBytes) == 0;
}

constexpr std::size_t kFullSamples24 =
    EngineLimits::kFrameSamples; // 504 bytes of samples in a whole frame
constexpr std::size_t kFullSamples16 = 126;
} // namespace

// No marker overlaps another (its last byte is none of the first four), so trying every offset
// finds just what a scan finds that steps over each match. The first and the last byte of sixteen
// offsets are tried at once; only where both fit are all five compared. That is one pair in 65536
// of random bytes, and the cost does not depend on what the samples are.
std::vector<std::size_t> FrameParser::findHeaders(const std::vector<int8_t> &block)
{
    std::vector<std::size_t> headers;
    headers.reserve(block.size() / kFrameBytes);

    const auto *bytes = reinterpret_cast<const std::uint8_t *>(block.data());
    const std::size_t ends = block.size() < kMarkerBytes ? 0 : block.size() - kMarkerBytes + 1;
    std::size_t p = 0;
#if defined(__SSE2__)
    const __m128i run = _mm_set1_epi8(char(kRun));
    const __m128i end = _mm_set1_epi8(char(kEnd));
    for (; p + 16 <= ends; p += 16) {
        const auto load = [&](std::size_t offset) {
            return _mm_loadu_si128(reinterpret_cast<const __m128i *>(bytes + p + offset));
        };
        const __m128i fits =
            _mm_and_si128(_mm_cmpeq_epi8(load(0), run), _mm_cmpeq_epi8(load(4), end));
        for (unsigned mask = unsigned(_mm_movemask_epi8(fits)); mask != 0; mask &= mask - 1) {
            const std::size_t candidate = p + std::size_t(std::countr_zero(mask));
            if (isMarker(bytes + candidate))
                headers.push_back(candidate);
        }
    }
#endif
    for (; p < ends; ++p) {
        if (isMarker(bytes + p))
            headers.push_back(p);
    }
    return headers;
}

std::size_t FrameParser::samplesIn(std::size_t distance, std::size_t format)
{
    const std::size_t full = format == 0 ? kFullSamples24 : kFullSamples16;
    switch (distance) {
    case kFrameBytes:
    case kFrameBytes + 1:
        return full;
    case kFrameBytes - 1:
        return full - 1;
    default:
        return 0;
    }
}

std::size_t FrameParser::keepTail(
    std::vector<int8_t> &block, const std::vector<std::size_t> &headers)
{
    if (headers.empty())
        return 0;
    const std::size_t tail = block.size() - headers.back();
    std::memmove(block.data(), block.data() + headers.back(), tail);
    return tail;
}

void FrameParser::convert(
    const std::uint8_t *bytes, std::size_t samples, std::size_t format, COMPLEX *out)
{
    auto *components = reinterpret_cast<double *>(out);
    if (format == 0)
        SampleConverter::from24(bytes, 2 * samples, components);
    else
        SampleConverter::from16(bytes, 2 * samples, components);
}
