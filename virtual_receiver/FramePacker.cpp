// SPDX-License-Identifier: GPL-3.0-or-later
#include "FramePacker.h"

#include "processor/Clones.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace vr
{
namespace
{
constexpr std::uint8_t kMarker[5] = {0x55, 0x55, 0x55, 0x55, 0x01};
constexpr std::size_t kMaxComponents = 2 * FramePacker::samplesPerFrame(true);
constexpr double kPeakFullScale = 16383.0; // 14 bits
constexpr std::uint16_t kOverflowBit = 0x8000;

// Added to a number well below 2^51 it leaves the number, rounded to nearest, in the low bits of
// the mantissa. Unlike a call of nearbyint() the compiler vectorises it on every x86-64.
constexpr double kRoundingMagic = 6755399441055744.0; // 1.5 * 2^52

struct Codes
{
    std::int32_t code[kMaxComponents];
    double peak; // largest magnitude before limiting, in codes
};

PROCESSOR_CLONES void toCodes(
    const double *components, std::size_t count, double scale, double largest, Codes &out)
{
    double peaks[4] = {};
    for (std::size_t i = 0; i < count; i += 4) {
        for (std::size_t k = 0; k < 4; ++k) {
            const double value = components[i + k] * scale;
            const double magnitude = std::fabs(value);
            peaks[k] = peaks[k] > magnitude ? peaks[k] : magnitude;
            const double upper = value < largest ? value : largest;
            const double limited = upper > -largest - 1.0 ? upper : -largest - 1.0;
            out.code[i + k] =
                std::int32_t(std::uint32_t(std::bit_cast<std::uint64_t>(limited + kRoundingMagic)));
        }
    }
    out.peak = std::max(std::max(peaks[0], peaks[1]), std::max(peaks[2], peaks[3]));
}

std::uint64_t countClipped(
    const double *components, std::size_t count, double scale, double largest)
{
    const auto beyond = [&](double x) {
        return x * scale >= largest + 0.5 || x * scale < -largest - 1.5;
    };
    std::uint64_t clipped = 0;
    for (std::size_t i = 0; i < count; i += 2)
        clipped += beyond(components[i]) || beyond(components[i + 1]);
    return clipped;
}

void store24(const std::int32_t *code, std::size_t count, std::uint8_t *out)
{
    // Whole words, each overwriting the sign byte of the one before; the last has no room for that.
    for (std::size_t i = 0; i + 1 < count; ++i)
        std::memcpy(out + 3 * i, &code[i], 4);
    std::memcpy(out + 3 * (count - 1), &code[count - 1], 3);
}

void store16(const std::int32_t *code, std::size_t count, std::uint8_t *out)
{
    for (std::size_t i = 0; i < count; ++i) {
        const auto value = std::uint16_t(code[i]);
        std::memcpy(out + 2 * i, &value, 2);
    }
}
} // namespace

void FramePacker::pack(
    const std::complex<double> *samples, double gain, bool shortSamples, std::uint8_t *frame)
{
    const std::size_t count = 2 * samplesPerFrame(shortSamples);
    const auto *components = reinterpret_cast<const double *>(samples);
    const double largest = shortSamples ? 32767.0 : 8388607.0;
    const double scale = gain * largest;

    Codes codes;
    toCodes(components, count, scale, largest, codes);
    bool overflow = false;
    if (codes.peak >= largest + 0.5) {
        const std::uint64_t clipped = countClipped(components, count, scale, largest);
        m_clippedSamples += clipped;
        overflow = clipped > 0;
    }
    const double peak = std::min(codes.peak / largest, 1.0) * kPeakFullScale;
    const auto peakWord =
        std::uint16_t(std::uint16_t(std::lround(peak)) | (overflow ? kOverflowBit : 0));

    std::memcpy(frame, kMarker, sizeof kMarker);
    frame[5] = m_counter++;
    std::memcpy(frame + 6, &peakWord, sizeof peakWord);
    if (shortSamples)
        store16(codes.code, count, frame + kHeaderSize);
    else
        store24(codes.code, count, frame + kHeaderSize);
}
} // namespace vr
