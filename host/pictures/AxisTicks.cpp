// SPDX-License-Identifier: GPL-3.0-or-later
#include "AxisTicks.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
constexpr double kRounding = 1e-9; // of a step: an end of the axis that is a tick but for rounding
constexpr double kLevelStepDb = 10.0;
constexpr double kLongestInSeconds = 180.0;
constexpr double kLongestInMinutes = 180.0 * 60.0;

struct Unit
{
    double size; // in hertz, seconds or decibels
    QString name;
};

/// Those that a step of 1, 2 or 5 times a power of ten needs, in its unit.
int decimalsOf(double step)
{
    return std::max(0, int(std::ceil(-std::log10(step) - kRounding)));
}

AxisTicks between(double low, double high, double step, const Unit &unit, int decimals)
{
    AxisTicks axis{{}, unit.name};
    if (!(step > 0.0))
        return axis;
    const double last = std::floor(high / step + kRounding);
    for (double n = std::ceil(low / step - kRounding); n <= last; ++n) {
        // The sum with 0 makes a plain zero of a negative one.
        const double value = n * step + 0.0;
        axis.ticks.push_back({value, QLocale().toString(value / unit.size, 'f', decimals)});
    }
    return axis;
}
} // namespace

double AxisTicks::stepFor(double span, int most)
{
    if (!(span > 0.0) || !std::isfinite(span))
        return 0.0;
    const double least = span / most;
    const double decade = std::pow(10.0, std::floor(std::log10(least)));
    for (const double digit : {1.0, 2.0, 5.0})
        if (digit * decade >= least * (1.0 - kRounding))
            return digit * decade;
    return 10.0 * decade;
}

AxisTicks AxisTicks::frequencies(double lowHz, double highHz, int most)
{
    const double largest = std::max(std::abs(lowHz), std::abs(highHz));
    const Unit unit = largest >= 1e6 ? Unit{1e6, "MHz"}
        : largest >= 1e3             ? Unit{1e3, "kHz"}
                                     : Unit{1.0, "Hz"};
    const double step = stepFor(highHz - lowHz, most);
    const int decimals = step > 0.0 ? decimalsOf(step / unit.size) : 0;
    return between(lowHz, highHz, step, unit, unit.size == 1e6 && decimals == 2 ? 3 : decimals);
}

AxisTicks AxisTicks::times(double lowSeconds, double highSeconds, int most)
{
    const double length = highSeconds - lowSeconds;
    const Unit unit = length <= kLongestInSeconds ? Unit{1.0, "s"}
        : length <= kLongestInMinutes             ? Unit{60.0, "min"}
                                                  : Unit{3600.0, "h"};
    const double step = stepFor(length / unit.size, most);
    return between(
        lowSeconds, highSeconds, step * unit.size, unit, step > 0.0 ? decimalsOf(step) : 0);
}

AxisTicks AxisTicks::levels(double lowDb, double highDb, int most)
{
    const double step = stepFor(highDb - lowDb, most);
    return between(lowDb, highDb, step > 0.0 ? std::max(kLevelStepDb, step) : 0.0, {1.0, "dB"}, 0);
}
} // namespace host
