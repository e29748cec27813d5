// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"
#include "support/Signals.h"

#include <algorithm>
#include <random>
#include <vector>

namespace test
{
/// Block lengths 1..longest that add up to `total`; about half of them short, as decimators and
/// sound cards produce them.
inline std::vector<int> randomCuts(int total, int longest, unsigned seed)
{
    std::mt19937 generator(seed);
    std::vector<int> cuts;
    while (total > 0) {
        const int bound = generator() % 2 == 0 ? longest : std::min(longest, 24);
        const int length = std::min(total, 1 + int(generator() % unsigned(bound)));
        cuts.push_back(length);
        total -= length;
    }
    return cuts;
}

/// The stream after `process(pointer, length)` went over it block by block.
template <typename Sample, typename Process>
std::vector<Sample> inBlocks(
    std::vector<Sample> stream, const std::vector<int> &cuts, Process process)
{
    Sample *block = stream.data();
    for (const int length : cuts) {
        process(block, length);
        block += length;
    }
    return stream;
}

/// Runs a block over a stream in place.
template <typename Block>
void run(Block &block, std::vector<COMPLEX> &stream, int length = 512)
{
    for (std::size_t at = 0; at < stream.size(); at += std::size_t(length))
        block.process(&stream[at], std::min(length, int(stream.size() - at)));
}

inline std::vector<COMPLEX> last(const std::vector<COMPLEX> &samples, int count)
{
    return {samples.end() - count, samples.end()};
}

/// One ear as a real signal.
inline std::vector<COMPLEX> ear(std::vector<COMPLEX> samples, double COMPLEX::*part)
{
    for (COMPLEX &sample : samples)
        sample = {sample.*part, 0.0};
    return samples;
}

inline std::vector<COMPLEX32> toSingle(const std::vector<COMPLEX> &signal)
{
    std::vector<COMPLEX32> out;
    for (const COMPLEX &sample : signal)
        out.push_back({float(sample.re), float(sample.im)});
    return out;
}

inline std::vector<COMPLEX> toDouble(const std::vector<COMPLEX32> &signal)
{
    std::vector<COMPLEX> out;
    for (const COMPLEX32 &sample : signal)
        out.push_back({sample.re, sample.im});
    return out;
}

inline std::vector<COMPLEX> impulse(int length)
{
    std::vector<COMPLEX> out(std::size_t(length), COMPLEX{0.0, 0.0});
    out[0] = {1.0, 0.0};
    return out;
}

/// The Fourier sum of a signal at a frequency in cycles per sample.
inline COMPLEX fourierSum(const std::vector<COMPLEX> &signal, double frequency)
{
    COMPLEX sum{0.0, 0.0};
    const auto probe = test::tone(int(signal.size()), -frequency);
    for (std::size_t n = 0; n < signal.size(); ++n) {
        sum.re += signal[n].re * probe[n].re - signal[n].im * probe[n].im;
        sum.im += signal[n].re * probe[n].im + signal[n].im * probe[n].re;
    }
    return sum;
}
} // namespace test
