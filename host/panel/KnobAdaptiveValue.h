// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "panel/KnobValue.h"

#include <algorithm>

namespace host
{
/// Slow turning goes step by step, fast turning with its speed squared: twice as fast is four times
/// as far in the same time for each click. A change of direction is slow at first, as one turns
/// back by a little after having gone too far.
class KnobAdaptiveValue : public KnobValue
{
public:
    /// Up to here a click is a step. A knob has some 24 clicks a turn; this is a turn in three
    /// seconds.
    static constexpr double kSlowClicksPerSecond = 8.0;

    /// The speed is the mean over about this time, so that one late click does not jerk.
    static constexpr double kMeanSeconds = 0.1;

    static constexpr int kUsualMost = 20;

    /// At most so many steps for a click.
    explicit KnobAdaptiveValue(int most = kUsualMost) : m_most(std::max(1, most)) { }

    int steps(int clicks, qint64 timeUs) override;

private:
    int m_most;
    double m_clicksPerSecond = 0.0; // 0: standing still
    qint64 m_lastUs = 0;
    bool m_isRight = true;
};
} // namespace host
