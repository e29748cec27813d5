// SPDX-License-Identifier: GPL-3.0-or-later
#include "PitchCheck.h"

#include "support/Signals.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace soak
{
namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;

/// To -pi..pi.
double wrapped(double angle)
{
    return std::remainder(angle, kTwoPi);
}

struct Line
{
    double slope;
    double worst; // distance of a point from it
};

/// Least squares through points one unit apart.
Line fit(const std::vector<double> &y)
{
    const double middle = 0.5 * (double(y.size()) - 1.0);
    double mean = 0.0, product = 0.0, squares = 0.0;
    for (std::size_t k = 0; k < y.size(); ++k) {
        mean += y[k] / double(y.size());
        product += y[k] * (double(k) - middle);
        squares += (double(k) - middle) * (double(k) - middle);
    }
    Line line{product / squares, 0.0};
    for (std::size_t k = 0; k < y.size(); ++k)
        line.worst =
            std::max(line.worst, std::abs(y[k] - mean - line.slope * (double(k) - middle)));
    return line;
}
} // namespace

Pitch measurePitch(const std::vector<COMPLEX> &audio, double rateHz, double toneHz)
{
    const auto second = long(rateHz);
    const long seconds = long(audio.size()) / second;
    if (seconds < 3)
        throw std::invalid_argument("too short for a pitch");
    Pitch pitch;
    std::vector<double> phases; // less what the tone at its place would have
    for (long k = 0; k < seconds; ++k) {
        const auto begin = audio.begin() + k * second;
        const COMPLEX part = test::component({begin, begin + second}, toneHz / rateHz);
        const double angle =
            wrapped(std::atan2(part.im, part.re) - kTwoPi * std::fmod(double(k) * toneHz, 1.0));
        phases.push_back(k == 0 ? angle : phases.back() + wrapped(angle - phases.back()));
        pitch.amplitude += test::magnitude(part) / double(seconds);
    }
    const Line line = fit(phases);
    pitch.offHz = line.slope / kTwoPi;
    pitch.jitterRad = line.worst;
    return pitch;
}
} // namespace soak
