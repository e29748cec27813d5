// SPDX-License-Identifier: GPL-3.0-or-later
#include "SceneLimits.h"

#include <sstream>

namespace vr
{
namespace
{
constexpr int kDigits = 12; // of a number in a message: any rate below 1 THz to the hertz

std::string outside(const char *what, double value, double low, double high)
{
    if (value >= low && value <= high)
        return {};
    std::ostringstream text;
    text.precision(kDigits);
    text << what << " of " << value << " Hz, it must be " << low << " to " << high;
    return text.str();
}
} // namespace

std::string wrongRate(double hertz)
{
    return outside("a sample rate", hertz, kLowestRateHz, kHighestRateHz);
}

std::string wrongFrequency(double hertz)
{
    return outside("a frequency", hertz, 0.0, kHighestFrequencyHz);
}
} // namespace vr
