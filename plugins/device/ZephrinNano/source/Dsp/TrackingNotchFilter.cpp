// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/TrackingNotchFilter.h"

#include <cassert>
#include <cmath>
#include <numbers>

namespace zephrinnano
{
namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;
} // namespace

void TrackingNotchFilter::update()
{
    m_inBand = m_offset < m_sampleRate * 0.5 && m_sampleRate * -0.5 < m_offset;
    // Single precision: the width is met to 6e-8 of itself. Milliseconds.
    const double timeConstant = float(1000.0 / (m_width * kTwoPi));
    const double decay = std::exp(-1000.0 / (timeConstant * m_sampleRate));
    const double angle = kTwoPi * (m_offset / m_sampleRate); // per sample
    const COMPLEX tone{std::cos(angle), std::sin(angle)};
    m_section = {.zero = tone, .pole = {decay * tone.re, decay * tone.im}};
}

void TrackingNotchFilter::process(COMPLEX *data, int length)
{
    if (!acts())
        return;
    assert(length <= kMaxBlock);
    NotchSection *const only = &m_section;
    NotchCascade::process(&only, 1, data, length);
}
} // namespace zephrinnano
