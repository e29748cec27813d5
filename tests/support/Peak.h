// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

namespace test
{
struct Peak
{
    double frequencyHz = 0.0;
    double levelDb = -200.0;
};

/// The largest bin of a spectrum line that is at most withinHz from nearHz. It and its neighbours,
/// in decibels, are taken for a parabola (J. O. Smith, "Spectral Audio Signal Processing",
/// quadratic interpolation of spectral peaks): right to 0.04 dB under a four-term window.
inline Peak peakNear(
    double centerHz, double spanHz, const std::vector<float> &line, double nearHz, double withinHz)
{
    const double binHz = spanHz / double(line.size());
    const double half = double(line.size() / 2);
    const auto bin = [&](double hz) {
        const double index = std::round((hz - centerHz) / binHz + half);
        return line.begin() + long(std::clamp(index, 1.0, double(line.size()) - 2.0));
    };
    const auto top = std::max_element(bin(nearHz - withinHz), bin(nearHz + withinHz) + 1);
    const double left = top[-1], middle = top[0], right = top[1];
    const double bend = left - 2.0 * middle + right;
    double shift = bend == 0.0 ? 0.0 : (left - right) / 2.0 / bend; // bins
    if (std::abs(shift) > 1.0)                                      // it rises further outside
        shift = 0.0;
    return {centerHz + (double(top - line.begin()) + shift - half) * binHz,
        middle - (left - right) * shift / 4.0};
}
} // namespace test
