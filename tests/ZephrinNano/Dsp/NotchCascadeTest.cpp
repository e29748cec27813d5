// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/IQNotchFilter.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <utility>

namespace
{
using Complex = std::complex<double>;

constexpr double kRate = 3072000.0;
constexpr double kRoundOff = 1e-11;

/// A notch in its plain form: a tone to 0 Hz, the DC block, a tone back.
struct PlainNotch
{
    double offset; // Hz
    double timeConstantMs;
    long long sample = 0;
    Complex input = 0.0;
    Complex output = 0.0;

    Complex next(Complex x)
    {
        const double turns = std::fmod(offset / kRate * double(sample++), 1.0);
        const Complex tone = std::polar(1.0, -2.0 * std::numbers::pi * turns);
        const Complex shifted = tone * x;
        output = shifted - std::exchange(input, shifted)
            + std::exp(-1000.0 / (timeConstantMs * kRate)) * output;
        return std::conj(tone) * output;
    }
};

// Blocks shorter than the cascade's steps at both ends and longer ones; a filter between the others
// that is off, and a change of one in mid-stream, which forgets that one's history alone.
TEST(NotchCascadeTest, EqualsTonesAndDcBlocksInSeries)
{
    constexpr double kWidth = 500.0; // half of what is set
    constexpr float kTimeConstantMs = float(1000.0 / (kWidth * 2.0 * std::numbers::pi));
    constexpr double kCentre = 7.1e6;
    for (const int count : {1, 2, 3, 5, 8, 11}) {
        IQNotchFilter list(std::size_t(count) + 1);
        std::vector<PlainNotch> plain;
        list.setActive(true);
        list.setSampleRate(kRate);
        list.setDds(kCentre);
        for (int i = 0; i <= count; ++i) {
            if (i == count / 2)
                continue;
            const double offset = 130000.0 * (i - 3.3);
            list.setEnable(unsigned(i), true);
            list.setWidth(unsigned(i), 2.0 * kWidth);
            list.setFrequency(unsigned(i), kCentre + offset);
            plain.push_back({offset, kTimeConstantMs});
        }
        unsigned seed = 1;
        for (const int length : {1, 2, 7, 8, 9, 512, 3, 2000}) {
            if (length == 512) {
                list.setFrequency(0, kCentre + 77000.0);
                if (count / 2 != 0)
                    plain[0] = {77000.0, kTimeConstantMs};
            }
            auto stream = test::noise(length, ++seed);
            auto expected = stream;
            for (COMPLEX &x : expected) {
                Complex y{x.re, x.im};
                for (PlainNotch &notch : plain)
                    y = notch.next(y);
                x = {y.real(), y.imag()};
            }
            list.process(stream.data(), length);
            ASSERT_LT(test::maxError(stream, expected), kRoundOff) << count << ' ' << length;
        }
    }
}
} // namespace
