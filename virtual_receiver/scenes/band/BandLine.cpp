// SPDX-License-Identifier: GPL-3.0-or-later
#include "BandLine.h"

#include "TextScanner.h"

#include <cmath>

namespace vr
{
namespace
{
void skipBlanks(TextScanner &scan)
{
    while (scan.take(" ") || scan.take("\t")) { }
}

std::string shortest(double value)
{
    std::string text = std::to_string(value);
    text.erase(text.find_last_not_of('0') + 1);
    return text.back() == '.' ? text.substr(0, text.size() - 1) : text;
}
} // namespace

std::string inQuotes(std::string_view text)
{
    return '"' + std::string(text) + '"';
}

BandLine::BandLine(std::string_view words)
{
    TextScanner scan(words);
    for (skipBlanks(scan); !scan.atEnd(); skipBlanks(scan)) {
        const std::string key(scan.takeUntil("= \t"));
        if (!scan.take("="))
            throw LineError(inQuotes(key) + " needs a value: " + key + "=...");
        std::string_view value;
        if (scan.take("\"")) {
            value = scan.takeUntil("\"");
            if (!scan.take("\""))
                throw LineError("the text of " + inQuotes(key) + " has no closing quote");
        } else {
            value = scan.takeUntil(" \t");
        }
        if (!m_values.emplace(key, value).second)
            throw LineError(inQuotes(key) + " is given twice");
    }
}

std::string BandLine::text(const std::string &key)
{
    m_used.insert(key);
    return m_values.at(key);
}

double BandLine::number(const std::string &key, double otherwise)
{
    return has(key) ? parseNumber(key, text(key)) : otherwise;
}

double BandLine::number(const std::string &key, double otherwise, double low, double high)
{
    const double value = number(key, otherwise);
    if (value < low || value > high)
        throw LineError(inQuotes(key) + " must be " + shortest(low) + " to " + shortest(high)
            + ", not " + inQuotes(m_values[key]));
    return value;
}

bool BandLine::flag(const std::string &key, bool otherwise)
{
    if (!has(key))
        return otherwise;
    const std::string value = text(key);
    if (value != "yes" && value != "no")
        throw LineError(inQuotes(key) + " must be yes or no, not " + inQuotes(value));
    return value == "yes";
}

double BandLine::parseNumber(const std::string &key, std::string_view text)
{
    TextScanner scan(text);
    double value = 0.0;
    const bool good = scan.take(value);
    const double factor = scan.take("k") ? 1e3 : scan.take("M") ? 1e6 : 1.0;
    if (!good || !scan.atEnd() || !std::isfinite(value))
        throw LineError(inQuotes(key) + " is not a number: " + inQuotes(text));
    return value * factor;
}

void BandLine::finish(const std::string &keyword) const
{
    for (const auto &[key, value] : m_values) {
        if (!m_used.count(key))
            throw LineError("a " + keyword + " has no " + inQuotes(key) + " here");
    }
}
} // namespace vr
