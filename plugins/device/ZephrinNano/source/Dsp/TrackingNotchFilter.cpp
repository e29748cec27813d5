// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/TrackingNotchFilter.h"

#include "signal_primitives/ipps.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

namespace zephrinnano
{
namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kNyquist = 0.5; // cycles per sample

// The tone that moves a signal at `frequency` (cycles per sample) to 0 Hz. The tone generator takes
// 0..1.
double toneTowardsZero(double frequency)
{
    double tone = frequency < -kNyquist ? kNyquist : -frequency;
    tone = std::max(tone, -kNyquist);
    return tone < 0.0 ? tone + 1.0 : tone;
}

void mix(COMPLEX *tone, double frequency, double &phase, COMPLEX *data, int length)
{
    ippsTone_Direct_64fc(tone, length, 1.0, frequency, &phase, ippAlgHintAccurate);
    ippsMul_64fc_I(tone, data, length);
}
} // namespace

void TrackingNotchFilter::Shift::process(COMPLEX *data, int length)
{
    mix(tone.data(), frequency, phase, data, length);
    if (secondEnabled)
        mix(tone.data(), secondFrequency, secondPhase, data, length);
}

void TrackingNotchFilter::update()
{
    m_inBand = m_offset < m_sampleRate * 0.5 && m_sampleRate * -0.5 < m_offset;
    m_poleRate = m_sampleRate;
    m_input = {0.0, 0.0};
    m_output = {0.0, 0.0};
    // Single precision: the width is met to 6e-8 of itself.
    m_timeConstant = float(1000.0 / (m_width * kTwoPi));
    m_decay = std::exp(-1000.0 / (m_timeConstant * m_poleRate));
    m_toZero.frequency = toneTowardsZero(m_offset / m_sampleRate);
    m_back.frequency = toneTowardsZero(-m_offset / m_sampleRate);
}

void TrackingNotchFilter::process(COMPLEX *data, int length)
{
    if (!m_inBand || !m_enabled)
        return;
    assert(length <= kMaxBlock);
    m_toZero.process(data, length);
    if (m_dcBlockEnabled)
        removeDc(data, length);
    m_back.process(data, length);
}

void TrackingNotchFilter::removeDc(COMPLEX *data, int length)
{
    const double decay = m_decay;
    COMPLEX input = m_input;
    COMPLEX output = m_output;
    for (int n = 0; n < length; ++n) {
        const COMPLEX x = data[n];
        output.re = x.re - input.re + decay * output.re;
        output.im = x.im - input.im + decay * output.im;
        input = x;
        data[n] = output;
    }
    m_input = input;
    m_output = output;
}
} // namespace zephrinnano
