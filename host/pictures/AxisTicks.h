// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

namespace host
{
/// The places of an axis that carry a number, rising, and the unit of those numbers.
struct AxisTicks
{
    struct Tick
    {
        double value; ///< in hertz, seconds or decibels, whatever the unit of the label
        QString label;
    };
    std::vector<Tick> ticks;
    QString unit;

    /// The smallest of 1, 2 and 5 times a power of ten that divides the span into at most `most`
    /// (above 0) parts. 0 for a span that is not above 0.
    static double stepFor(double span, int most);

    /// In Hz, kHz or MHz, told by the larger end. Numbers have the decimals that the step needs;
    /// in MHz two become three, so that 7.100 and 14.074 keep their whole kilohertz.
    static AxisTicks frequencies(double lowHz, double highHz, int most);

    /// In s, min or h, told by the length.
    static AxisTicks times(double lowSeconds, double highSeconds, int most);

    /// Every 10 dB, or 20, 50, ... where that is more than `most`.
    static AxisTicks levels(double lowDb, double highDb, int most);
};
} // namespace host
