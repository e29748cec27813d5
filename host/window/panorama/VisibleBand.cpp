// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/panorama/VisibleBand.h"

#include "radio/Radio.h"

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
constexpr double kPanStepHz = 100.0;  // the receiver moves by whole ones
constexpr double kComfortable = 0.04; // of the view, at least so far from its edge is the VFO
} // namespace

VisibleBand::VisibleBand(Radio &radio) : m_radio(radio)
{
    fit();
    connect(&radio, &Radio::centerChanged, this, &VisibleBand::onBand);
    connect(&radio, &Radio::rateChanged, this, &VisibleBand::fit);
    connect(&radio, &Radio::frequencyChanged, this, &VisibleBand::onTuned);
    connect(&radio, &Radio::activeChanged, this, &VisibleBand::onTuned);
}

bool VisibleBand::isWhole() const
{
    return spanHz() >= m_radio.spanHz() * (1.0 - 1e-9);
}

void VisibleBand::set(double lowHz, double highHz)
{
    const double bandLow = m_radio.centerHz() - m_radio.spanHz() / 2.0;
    const double bandHigh = bandLow + m_radio.spanHz();
    const double span =
        std::clamp(highHz - lowHz, std::min(kNarrowestHz, m_radio.spanHz()), m_radio.spanHz());
    lowHz = std::clamp(lowHz, bandLow, bandHigh - span);
    if (lowHz == m_lowHz && lowHz + span == m_highHz)
        return;
    m_lowHz = lowHz;
    m_highHz = lowHz + span;
    emit changed();
}

void VisibleBand::zoom(double factor, double aboutHz)
{
    const double span =
        std::clamp(spanHz() * factor, std::min(kNarrowestHz, m_radio.spanHz()), m_radio.spanHz());
    const double share = (aboutHz - m_lowHz) / spanHz();
    set(aboutHz - share * span, aboutHz + (1.0 - share) * span);
}

void VisibleBand::pan(double hertz)
{
    const double before = m_lowHz;
    set(m_lowHz + hertz, m_highHz + hertz);
    const double rest = std::round((hertz - (m_lowHz - before)) / kPanStepHz) * kPanStepHz;
    if (rest == 0.0 || !m_radio.setCenter(m_radio.centerHz() + rest))
        return;
    set(before + hertz, before + hertz + spanHz());
}

void VisibleBand::fit()
{
    const double half = m_radio.spanHz() / 2.0;
    set(m_radio.centerHz() - half, m_radio.centerHz() + half);
}

void VisibleBand::onBand()
{
    set(m_lowHz, m_highHz);
    onTuned();
}

void VisibleBand::onTuned()
{
    const double tuned = m_radio.frequencyHz();
    const double margin = kComfortable * spanHz();
    if (tuned >= m_lowHz + margin && tuned <= m_highHz - margin)
        return;
    set(tuned - spanHz() / 2.0, tuned + spanHz() / 2.0);
}
} // namespace host
