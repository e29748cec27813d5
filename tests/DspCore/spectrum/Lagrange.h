// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <vector>

namespace test
{
/// The cubic through the four points around `position`, by Lagrange's products; points outside the
/// line count as 0.
inline double lagrange(const std::vector<float> &line, double position)
{
    const int start = int(std::floor(position)) - 1;
    double sum = 0.0;
    for (int i = start; i < start + 4; ++i) {
        double weight = i >= 0 && i < int(line.size()) ? double(line[std::size_t(i)]) : 0.0;
        for (int j = start; j < start + 4; ++j) {
            if (j != i)
                weight *= (position - j) / (i - j);
        }
        sum += weight;
    }
    return sum;
}

/// A line stretched to `count` points. The first three of count + 3 equidistant outputs lie in the
/// silence before it, and the cubic comes two points late.
inline std::vector<double> stretched(const std::vector<float> &line, int count)
{
    std::vector<double> out;
    for (int j = 0; j < count; ++j)
        out.push_back(lagrange(line, (j + 3.0) * double(line.size()) / (count + 3.0) - 2.0));
    return out;
}
} // namespace test
