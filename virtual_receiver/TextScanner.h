// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <charconv>
#include <string_view>
#include <type_traits>

namespace vr
{
/// Takes a short text apart from its front. Each take function removes what it recognised, or
/// leaves the text alone and returns false.
class TextScanner
{
public:
    explicit TextScanner(std::string_view text) : m_text(text) { }

    bool take(std::string_view literal)
    {
        if (!m_text.starts_with(literal))
            return false;
        m_text.remove_prefix(literal.size());
        return true;
    }

    /// An integer without sign, or a decimal number, by the type of the destination.
    template <typename Number>
    requires std::is_arithmetic_v<Number>
    bool take(Number &number)
    {
        const auto [end, error] =
            std::from_chars(m_text.data(), m_text.data() + m_text.size(), number);
        if (error != std::errc())
            return false;
        m_text.remove_prefix(std::size_t(end - m_text.data()));
        return true;
    }

    /// A separator and the number after it; true as well, and nothing taken, if neither is there.
    template <typename Number>
    bool takeOptional(std::string_view separator, Number &number)
    {
        return !take(separator) || take(number);
    }

    /// All up to the first of these characters, or to the end.
    std::string_view takeUntil(std::string_view stops)
    {
        const std::string_view found = m_text.substr(0, m_text.find_first_of(stops));
        m_text.remove_prefix(found.size());
        return found;
    }

    /// All up to a text and the text itself.
    bool takeTo(std::string_view literal)
    {
        const auto at = m_text.find(literal);
        if (at == std::string_view::npos)
            return false;
        m_text.remove_prefix(at + literal.size());
        return true;
    }

    bool atEnd() const { return m_text.empty(); }

private:
    std::string_view m_text;
};
} // namespace vr
