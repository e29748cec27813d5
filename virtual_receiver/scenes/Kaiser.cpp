// SPDX-License-Identifier: GPL-3.0-or-later
#include "Kaiser.h"

#include <cmath>
#include <numbers>

namespace vr::kaiser
{
namespace
{
// Modified Bessel function of order 0 by its power series; 40 terms are exact to rounding for the
// arguments up to 12 that occur here.
double bessel0(double x)
{
    double sum = 1.0;
    double term = 1.0;
    for (int k = 1; k < 40; ++k) {
        term *= (x / (2.0 * k)) * (x / (2.0 * k));
        sum += term;
    }
    return sum;
}
} // namespace

std::size_t length(double attenuationDb, double transition)
{
    const double width = 2.0 * std::numbers::pi * transition;
    return std::size_t(std::ceil((attenuationDb - 7.95) / (2.285 * width))) + 1;
}

double window(double attenuationDb, double position)
{
    if (std::fabs(position) >= 1.0)
        return 0.0;
    const double beta = 0.1102 * (attenuationDb - 8.7);
    return bessel0(beta * std::sqrt(1.0 - position * position)) / bessel0(beta);
}

double sinc(double x)
{
    const double angle = std::numbers::pi * x;
    return std::fabs(angle) < 1e-9 ? 1.0 : std::sin(angle) / angle;
}
} // namespace vr::kaiser
