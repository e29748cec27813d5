// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/AutoPreamp.h"

#include <QTimerEvent>

#include <algorithm>
#include <cmath>

namespace
{
constexpr int kTickMs = 100;
constexpr unsigned kOverflowBit = 0x8000;
constexpr double kFullScale = 65532.0; // 14 bits of ones, times 4

constexpr int kLastTick = 20;     // ticks 0..20: a decision period of 21
constexpr int kManyOverflows = 8; // in one period
constexpr int kQuietPeriods = 16;
constexpr double kTargetDbfs = -10.0;
constexpr int kSmallestRaise = 4; // dB

constexpr uint kShortestHoldMs = 10;
constexpr uint kLongestHoldMs = 1000;

// The multiplication by 4 pushes the overflow bit and the unused bit 14 out of the 16 bits.
float levelDbfs(unsigned short word)
{
    const auto magnitude = float(static_cast<unsigned short>(word * 4u));
    return float(20.0 * std::log10(magnitude / kFullScale));
}
} // namespace

AutoPreamp *AutoPreamp::instance()
{
    static AutoPreamp self;
    return &self;
}

AutoPreamp::AutoPreamp()
{
    connect(&m_timer, &QTimer::timeout, this, &AutoPreamp::onUpdate);
}

void AutoPreamp::setAdcValue(unsigned short value)
{
    const unsigned short held = m_adcValue;
    if (value == held)
        return;
    m_adcValue.exchange(std::max(value, held));
    m_updated.exchange(true);
}

void AutoPreamp::start()
{
    m_tick = 0;
    m_quiet = 0;
    m_overflows = 0;
    m_peak = kNoPeak;
    m_timer.start(kTickMs);
}

void AutoPreamp::stop()
{
    m_timer.stop();
}

void AutoPreamp::setAuto(bool state)
{
    m_autoMode = state;
    m_overflows = 0;
    m_peak = kNoPeak;
}

void AutoPreamp::onUpdate()
{
    if (!m_updated)
        return;
    const unsigned short word = m_adcValue;
    m_adcValue = 0;
    m_updated = false;

    const float level = levelDbfs(word); // minus infinity for a magnitude of 0
    if (word & kOverflowBit) {
        ++m_overflows;
        emit adcOverflow();
    }
    m_peak = std::max(m_peak, level);

    if (!m_autoMode)
        return;
    if (m_tick++ >= kLastTick)
        endPeriod();
    raiseIfQuiet();
}

void AutoPreamp::endPeriod()
{
    if (m_overflows > 0) {
        m_quiet = 0;
        m_peak = kNoPeak;
        emit deltaAtt(m_overflows >= kManyOverflows ? -4 : -2);
    } else {
        ++m_quiet;
    }
    m_overflows = 0;
    m_tick = 0;
}

void AutoPreamp::raiseIfQuiet()
{
    if (m_quiet < kQuietPeriods)
        return;
    const int step = int(std::ceil(kTargetDbfs - m_peak));
    if (step >= kSmallestRaise)
        emit deltaAtt(step);
    m_peak = kNoPeak;
    m_quiet = 0;
}

void ValueTimeout::setValue(QVariant val)
{
    if (m_value == val)
        return;
    m_value = std::move(val);
    m_changed = true;
}

void ValueTimeout::setTimeout(uint val)
{
    m_timer.start(int(std::clamp(val, kShortestHoldMs, kLongestHoldMs)), this);
}

void ValueTimeout::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId() || !m_changed)
        return;
    m_changed = false;
    emit valueChanged(m_value);
}
