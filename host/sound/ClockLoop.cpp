// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/ClockLoop.h"

#include <algorithm>

namespace host
{
namespace
{
constexpr double kFrequency = 1.0 / 50.0;             // radians a second
constexpr double kProportional = 2.0 * kFrequency;    // per second
constexpr double kIntegral = kFrequency * kFrequency; // per second squared

// Time constants of two low-passes in a row, in seconds. The first takes the unevenness of reading
// in blocks out of the pitch, the second the steps that are left from block to block. Where the
// loop's gain is 1 they cost 18 degrees of phase.
constexpr double kSmoothing = 6.0;
constexpr double kStepSmoothing = 2.0;
} // namespace

void ClockLoop::restart(double targetSeconds)
{
    m_target = targetSeconds;
    m_isFresh = true;
    m_correction = m_integral;
}

double ClockLoop::update(double waiting, double seconds)
{
    if (m_isFresh)
        m_rough = m_smooth = m_target;
    m_isFresh = false;
    m_rough += (waiting - m_rough) * seconds / (kSmoothing + seconds);
    m_smooth += (m_rough - m_smooth) * seconds / (kStepSmoothing + seconds);
    const double error = m_smooth - m_target;
    const double wanted = kProportional * error + m_integral;
    m_correction = std::clamp(wanted, -kMostCorrection, kMostCorrection);
    if (m_correction == wanted) // at the limit the integral would run away
        m_integral =
            std::clamp(m_integral + kIntegral * error * seconds, -kMostCorrection, kMostCorrection);
    return m_correction;
}
} // namespace host
