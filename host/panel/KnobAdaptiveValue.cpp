// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/KnobAdaptiveValue.h"

#include <cmath>
#include <cstdlib>

namespace host
{
namespace
{
// Events of one moment; a knob cannot be turned so fast that it matters.
constexpr double kShortestSeconds = 1e-3;
} // namespace

int KnobAdaptiveValue::steps(int clicks, qint64 timeUs)
{
    if (clicks == 0)
        return 0;
    const double seconds = std::max(kShortestSeconds, double(timeUs - m_lastUs) * 1e-6);
    const bool isRight = clicks > 0;
    if (isRight != m_isRight)
        m_clicksPerSecond = 0.0;
    // A first-order low-pass of the speed; what has stood still longer begins anew.
    const double weight = 1.0 - std::exp(-seconds / kMeanSeconds);
    m_clicksPerSecond += weight * (std::abs(clicks) / seconds - m_clicksPerSecond);
    m_lastUs = timeUs;
    m_isRight = isRight;
    const double speed = m_clicksPerSecond / kSlowClicksPerSecond;
    const double factor = std::clamp(speed * speed, 1.0, double(m_most));
    return int(std::lround(clicks * factor));
}
} // namespace host
