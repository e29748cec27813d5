// SPDX-License-Identifier: GPL-3.0-or-later
#include "NoiseGenerator.h"

#include <cmath>
#include <numbers>
#include <vector>

namespace vr
{
namespace
{
constexpr unsigned kBits = 14;
constexpr std::size_t kSize = 1u << kBits;

// The value that a normal variate exceeds with this probability, below one half. Newton's method on
// erfc from below, where it climbs without overshooting.
double upperQuantile(double probability)
{
    double x = 0.0;
    for (int i = 0; i < 60; ++i) {
        const double excess = 0.5 * std::erfc(x / std::numbers::sqrt2) - probability;
        const double density = std::exp(-0.5 * x * x) / std::sqrt(2.0 * std::numbers::pi);
        x += excess / density;
    }
    return x;
}

std::vector<float> makeTable()
{
    std::vector<float> table(kSize);
    for (std::size_t i = 0; i < kSize / 2; ++i) {
        const double value = upperQuantile((double(i) + 0.5) / double(kSize));
        table[i] = float(value);
        table[kSize - 1 - i] = float(-value);
    }
    return table;
}
} // namespace

void NoiseGenerator::add(Sample *out, std::size_t count)
{
    static const std::vector<float> table = makeTable();
    std::uint64_t state = m_state;
    for (std::size_t i = 0; i < count; ++i) {
        state += 0x9e3779b97f4a7c15;
        std::uint64_t z = state;
        z = (z ^ z >> 30) * 0xbf58476d1ce4e5b9;
        z = (z ^ z >> 27) * 0x94d049bb133111eb;
        z ^= z >> 31;
        const double re = table[z & (kSize - 1)];
        const double im = table[z >> 32 & (kSize - 1)];
        out[i] += Sample(m_sigma * re, m_sigma * im);
    }
    m_state = state;
}
} // namespace vr
