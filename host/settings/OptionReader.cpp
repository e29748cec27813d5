// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/OptionReader.h"

#include "settings/Numbers.h"
#include "settings/UsageError.h"

#include <cmath>

namespace host
{
QString OptionReader::file(const char *option) const
{
    if (isSet(option) && text(option).isEmpty())
        refuse(QString("--%1: no file given").arg(option));
    return text(option);
}

double OptionReader::number(const char *option, double fallback) const
{
    if (!isSet(option))
        return fallback;
    const auto value = parseNumber(text(option));
    if (!value)
        refuse(QString("--%1: '%2' is not a number").arg(option, text(option)));
    return *value;
}

double OptionReader::numberIn(
    const char *option, double fallback, double lowest, double highest) const
{
    const double value = number(option, fallback);
    if (value < lowest || value > highest)
        refuse(QString("--%1: %2 is outside %3 to %4")
                   .arg(option, text(option), formatNumber(lowest), formatNumber(highest)));
    return value;
}

std::optional<double> OptionReader::find(const char *option, double lowest, double highest) const
{
    if (!isSet(option))
        return std::nullopt;
    return numberIn(option, lowest, lowest, highest);
}

std::optional<int> OptionReader::findInteger(const char *option, int lowest, int highest) const
{
    const auto value = find(option, lowest, highest);
    if (!value)
        return std::nullopt;
    if (*value != std::trunc(*value))
        refuse(QString("--%1: '%2' is not a whole number").arg(option, text(option)));
    return int(*value);
}

void OptionReader::require(const char *option, const char *needed) const
{
    if (isSet(option) && !isSet(needed))
        refuse(QString("--%1 needs --%2").arg(option, needed));
}
} // namespace host
