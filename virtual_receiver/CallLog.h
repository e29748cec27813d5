// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <initializer_list>
#include <string>

namespace vr
{
/// The FT_ calls as text, one a line: name, then the numeric arguments in decimal without the
/// handle and the pointers, as in "FT_SetBitMode(255, 64)". Not thread-safe.
class CallLog
{
public:
    using Numbers = std::initializer_list<long long>;

    void add(const char *name, Numbers numbers)
    {
        m_text += name;
        const char *separator = "(";
        for (const long long number : numbers) {
            m_text += separator + std::to_string(number);
            separator = ", ";
        }
        m_text += numbers.size() ? ")\n" : "()\n";
    }

    const std::string &text() const { return m_text; }
    void clear() { m_text = {}; }

private:
    std::string m_text;
};
} // namespace vr
