// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

namespace host
{
/// Gives stereo audio the treble of another de-emphasis than the one that it was decoded with.
///
/// A de-emphasis of time constant T is the one-pole low-pass y = x (1 - p) + y' p with
/// p = exp(-1 / (T rate)), the impulse-invariant form of an RC circuit. Its inverse has a zero in
/// place of the pole, so one step takes out the old pole and puts in the new one:
///
///     y = x k - x' k pOld + y' pNew,   k = (1 - pNew) / (1 - pOld)
///
/// A time constant of 0 is none. One thread at a time.
class Deemphasis
{
public:
    /// Time constants in microseconds, rate in hertz.
    Deemphasis(double oldUs, double newUs, double rateHz);

    /// In place, left and right in turn.
    void process(float *interleaved, std::size_t frames);

private:
    double m_oldPole;
    double m_newPole;
    double m_gain;
    std::array<double, 2> m_in{}; // the last sample of each side
    std::array<double, 2> m_out{};
};
} // namespace host
