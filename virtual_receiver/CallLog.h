// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <type_traits>

namespace vr
{
/// The FT_ calls as text, one a line: name, then the numeric arguments in decimal without the
/// handle and the pointers, as in "FT_SetBitMode(255, 64)". Not thread-safe.
class CallLog
{
public:
    template <typename... Numbers>
    void add(const char *name, Numbers... numbers)
    {
        static_assert((std::is_integral_v<Numbers> && ...));
        m_text += name;
        m_text += '(';
        [[maybe_unused]] const char *separator = "";
        ((m_text += separator, m_text += std::to_string(numbers), separator = ", "), ...);
        m_text += ")\n";
    }

    const std::string &text() const { return m_text; }
    void clear() { m_text.clear(); }

private:
    std::string m_text;
};
} // namespace vr
