// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Velmora
{
/// One complex number as a plain pair, real part first, with no padding: an array of n of them is
/// an array of 2n interleaved real numbers and may be handed to code that wants that.
template <typename T>
struct complex
{
    T re;
    T im;

    friend constexpr bool operator==(const complex &, const complex &) = default;
};

static_assert(sizeof(complex<double>) == 2 * sizeof(double));
static_assert(sizeof(complex<float>) == 2 * sizeof(float));
} // namespace Velmora
