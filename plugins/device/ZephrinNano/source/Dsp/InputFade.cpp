// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/InputFade.h"

namespace
{
constexpr double kPole = 0.05;
constexpr double kCoefficient = 0.95;

float next(float gain, float target)
{
    return float(kPole * gain + kCoefficient * target);
}
} // namespace

void InputFade::process(gsl::span<COMPLEX> block)
{
    float gain = m_gain;
    const float target = m_target;
    for (COMPLEX &sample : block) {
        const float following = next(gain, target);
        // Settled at unity: every later factor is 1 and the rest of the block stays as it is.
        if (following == gain && gain == 1.0f)
            break;
        gain = following;
        sample.re *= gain;
        sample.im *= gain;
    }
    m_gain = gain;
}
