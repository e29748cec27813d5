// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/driver/FrameParser.h"

#include <bit>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
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

#if defined(__x86_64__)
[[gnu::always_inline]] inline void appendMarkers(const std::uint8_t *bytes, std::size_t first,
    unsigned candidates, std::vector<std::size_t> &headers)
{
    for (; candidates != 0; candidates &= candidates - 1) {
        const std::size_t candidate = first + std::size_t(std::countr_zero(candidates));
        if (isMarker(bytes + candidate))
            headers.push_back(candidate);
    }
}

// Tries the first and the last byte of 32 offsets at once. Returns where the rest begins.
__attribute__((target("avx2"))) std::size_t findHeadersAvx2(
    const std::uint8_t *bytes, std::size_t ends, std::vector<std::size_t> &headers)
{
    constexpr std::size_t kStep = 32;
    const __m256i run = _mm256_set1_epi8(char(kRun));
    const __m256i end = _mm256_set1_epi8(char(kEnd));
    std::size_t p = 0;
    for (; p + kStep <= ends; p += kStep) {
        const auto *at = reinterpret_cast<const __m256i *>(bytes + p);
        const auto *after = reinterpret_cast<const __m256i *>(bytes + p + kMarkerBytes - 1);
        const __m256i fits = _mm256_and_si256(_mm256_cmpeq_epi8(_mm256_loadu_si256(at), run),
            _mm256_cmpeq_epi8(_mm256_loadu_si256(after), end));
        appendMarkers(bytes, p, unsigned(_mm256_movemask_epi8(fits)), headers);
    }
    return p;
}

// The same with the 16 offsets of the baseline.
std::size_t findHeadersSse2(
    const std::uint8_t *bytes, std::size_t ends, std::vector<std::size_t> &headers)
{
    constexpr std::size_t kStep = 16;
    const __m128i run = _mm_set1_epi8(char(kRun));
    const __m128i end = _mm_set1_epi8(char(kEnd));
    std::size_t p = 0;
    for (; p + kStep <= ends; p += kStep) {
        const auto *at = reinterpret_cast<const __m128i *>(bytes + p);
        const auto *after = reinterpret_cast<const __m128i *>(bytes + p + kMarkerBytes - 1);
        const __m128i fits = _mm_and_si128(
            _mm_cmpeq_epi8(_mm_loadu_si128(at), run), _mm_cmpeq_epi8(_mm_loadu_si128(after), end));
        appendMarkers(bytes, p, unsigned(_mm_movemask_epi8(fits)), headers);
    }
    return p;
}
#endif
} // namespace

// No marker overlaps another (its last byte is none of the first four), so trying every offset
// finds just what a scan finds that steps over each match. The first and the last byte of many
// offsets are tried at once; only where both fit are all five compared. That is one pair in 65536
// of random bytes, and the cost does not depend on what the samples are.
std::vector<std::size_t> FrameParser::findHeaders(const std::vector<int8_t> &block)
{
    std::vector<std::size_t> headers;
    headers.reserve(block.size() / kFrameBytes);

    const auto *bytes = reinterpret_cast<const std::uint8_t *>(block.data());
    const std::size_t ends = block.size() < kMarkerBytes ? 0 : block.size() - kMarkerBytes + 1;
    std::size_t p = 0;
#if defined(__x86_64__)
    static const bool isWide = __builtin_cpu_supports("avx2");
    p = (isWide ? findHeadersAvx2 : findHeadersSse2)(bytes, ends, headers);
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

std::size_t FrameParser::samplesIn(const std::vector<std::size_t> &headers, std::size_t format)
{
    std::size_t samples = 0;
    for (std::size_t i = 1; i < headers.size(); ++i)
        samples += samplesIn(headers[i] - headers[i - 1], format);
    return samples;
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
    const std::uint8_t *bytes, std::size_t samples, std::size_t format, COMPLEX *out, double gain)
{
    auto *components = reinterpret_cast<double *>(out);
    if (format == 0)
        SampleConverter::from24(bytes, 2 * samples, components, gain);
    else
        SampleConverter::from16(bytes, 2 * samples, components, gain);
}
