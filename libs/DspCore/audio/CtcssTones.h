// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

namespace Velmora
{
/// Sub-audible squelch tones in hertz, by the index that the host uses.
inline constexpr std::array<float, 42> CTCSS = {
    67.0f,
    69.3f,
    71.9f,
    74.4f,
    77.0f,
    79.7f,
    82.5f,
    85.4f,
    88.5f,
    91.5f,
    94.8f,
    97.4f,
    100.0f,
    103.5f,
    107.2f,
    110.9f,
    114.8f,
    118.8f,
    123.0f,
    127.3f,
    131.8f,
    136.5f,
    141.3f,
    146.2f,
    151.4f,
    156.7f,
    162.2f,
    167.9f,
    173.8f,
    179.9f,
    186.2f,
    192.8f,
    203.5f,
    206.5f,
    210.7f,
    218.1f,
    225.7f,
    229.1f,
    233.6f,
    241.8f,
    250.3f,
    254.1f,
};
} // namespace Velmora
