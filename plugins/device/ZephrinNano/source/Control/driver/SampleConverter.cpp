// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/driver/SampleConverter.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace
{
#if defined(__x86_64__)
// Eight components (24 bytes) a turn. Two overlapping 16-byte loads cover exactly those bytes, so
// nothing after them is touched:
//
//   byte   0           8     12       16                24
//   low    |--- components 0..3 --|...|
//   high               |.....|--- components 4..7 ------|
//
// The shuffle moves the bytes of each component to the top of its 32-bit lane; index -1 writes the
// zero below them.
__attribute__((target("avx2"))) void from24Avx2(
    const std::uint8_t *bytes, std::size_t count, double *out, double gain)
{
    const __m256i spread = _mm256_setr_epi8(-1, 0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, //
        -1, 4, 5, 6, -1, 7, 8, 9, -1, 10, 11, 12, -1, 13, 14, 15);
    const __m256d scale = _mm256_set1_pd(SampleConverter::kScale24);
    const __m256d factor = _mm256_set1_pd(gain);

    std::size_t i = 0;
    for (; i + 8 <= count; i += 8, bytes += 8 * SampleConverter::kBytes24) {
        const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i *>(bytes));
        const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i *>(bytes + 8));
        const __m256i codes = _mm256_shuffle_epi8(_mm256_set_m128i(high, low), spread);
        const __m256d first = _mm256_cvtepi32_pd(_mm256_castsi256_si128(codes));
        const __m256d second = _mm256_cvtepi32_pd(_mm256_extracti128_si256(codes, 1));
        _mm256_storeu_pd(out + i, _mm256_mul_pd(_mm256_mul_pd(first, scale), factor));
        _mm256_storeu_pd(out + i + 4, _mm256_mul_pd(_mm256_mul_pd(second, scale), factor));
    }
    SampleConverter::from24Plain(bytes, count - i, out + i, gain);
}
#endif

using Convert = void (*)(const std::uint8_t *, std::size_t, double *, double);

Convert fastest24()
{
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2"))
        return from24Avx2;
#endif
    return SampleConverter::from24Plain;
}
} // namespace

void SampleConverter::from24(const std::uint8_t *bytes, std::size_t count, double *out, double gain)
{
    static const Convert convert = fastest24();
    convert(bytes, count, out, gain);
}

void SampleConverter::from24Plain(
    const std::uint8_t *bytes, std::size_t count, double *out, double gain)
{
    for (std::size_t i = 0; i < count; ++i, bytes += kBytes24) {
        const std::uint32_t code = std::uint32_t(bytes[0]) << 8 | std::uint32_t(bytes[1]) << 16
            | std::uint32_t(bytes[2]) << 24;
        out[i] = double(std::int32_t(code)) * kScale24 * gain;
    }
}

void SampleConverter::from16(const std::uint8_t *bytes, std::size_t count, double *out, double gain)
{
    for (std::size_t i = 0; i < count; ++i, bytes += kBytes16) {
        const std::uint32_t code = std::uint32_t(bytes[0]) << 16 | std::uint32_t(bytes[1]) << 24;
        out[i] = double(std::int32_t(code)) * kScale16 * gain;
    }
}
