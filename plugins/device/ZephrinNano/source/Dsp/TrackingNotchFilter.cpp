// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/TrackingNotchFilter.h"

#include "processor/Clones.h"
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

[[gnu::always_inline]] inline COMPLEX difference(COMPLEX x, COMPLEX before)
{
    return {x.re - before.re, x.im - before.im};
}

[[gnu::always_inline]] inline COMPLEX withFeedback(COMPLEX x, double pole, COMPLEX output)
{
    return {x.re + pole * output.re, x.im + pole * output.im};
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

// The output that the next one waits for is a product and a sum away. Two samples a round halve
// that way: y[n+1] = d[n+1] + p d[n] + p^2 y[n-1], d the differences of the input.
PROCESSOR_CLONES
void TrackingNotchFilter::removeDc(COMPLEX *data, int length)
{
    const double pole = m_decay;
    const double squaredPole = pole * pole;
    COMPLEX input = m_input;
    COMPLEX output = m_output;
    int n = 0;
    for (; n + 1 < length; n += 2) {
        const COMPLEX first = difference(data[n], input);
        const COMPLEX second = withFeedback(difference(data[n + 1], data[n]), pole, first);
        input = data[n + 1];
        data[n] = withFeedback(first, pole, output);
        output = withFeedback(second, squaredPole, output);
        data[n + 1] = output;
    }
    if (n < length) {
        output = withFeedback(difference(data[n], input), pole, output);
        input = data[n];
        data[n] = output;
    }
    m_input = input;
    m_output = output;
}
} // namespace zephrinnano
