// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string_view>
#include <type_traits>

/// What every fuzzer is: one function that takes any bytes, and stops the program where it finds
/// something wrong. Each is a program of its own.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace fuzz
{
/// Ends the program, which is how a fuzzer tells of a finding, where a property does not hold.
inline void require(bool holds, const char *property)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", property);
    std::abort();
}

/// The bytes of an input, taken from the front. After their end there are zeros without limit.
class Input
{
public:
    Input(const std::uint8_t *data, std::size_t size) : m_rest(data, size) { }

    bool isEmpty() const { return m_rest.empty(); }
    std::size_t size() const { return m_rest.size(); }

    /// A number as it lies in memory, of any value: floating point includes what is not finite.
    template <typename Number>
    requires std::is_arithmetic_v<Number> Number take()
    {
        Number value = {};
        const auto taken = bytes(sizeof value);
        if (!taken.empty()) // an empty span may be null
            std::memcpy(&value, taken.data(), taken.size());
        return value;
    }

    bool flag() { return take<std::uint8_t>() % 2 != 0; }

    /// 0..count-1.
    std::size_t below(std::size_t count) { return take<std::uint16_t>() % count; }

    /// As many bytes as there are, up to a number.
    std::span<const std::uint8_t> bytes(std::size_t most)
    {
        const auto taken = m_rest.first(std::min(most, m_rest.size()));
        m_rest = m_rest.subspan(taken.size());
        return taken;
    }

    /// All that is left.
    std::string_view text()
    {
        const auto taken = bytes(m_rest.size());
        return {reinterpret_cast<const char *>(taken.data()), taken.size()};
    }

private:
    std::span<const std::uint8_t> m_rest;
};
} // namespace fuzz
