// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vr
{
/// What is wrong with a line of a band file, without its place.
struct LineError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

std::string inQuotes(std::string_view text);

/// The key=value words of a line of a band file. Every value that is asked for counts as used;
/// finish() complains about the others. All throw a LineError.
class BandLine
{
public:
    explicit BandLine(std::string_view words);

    bool has(const std::string &key) const { return m_values.count(key) > 0; }

    /// The value of a key that is there.
    std::string text(const std::string &key);

    /// otherwise is for a key that is not there.
    double number(const std::string &key, double otherwise);
    double number(const std::string &key, double otherwise, double low, double high);
    bool flag(const std::string &key, bool otherwise);

    /// A number with or without "k" or "M" after it.
    static double parseNumber(const std::string &key, std::string_view text);

    void finish(const std::string &keyword) const;

private:
    std::map<std::string, std::string> m_values;
    std::set<std::string> m_used;
};
} // namespace vr
