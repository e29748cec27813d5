// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/panorama/SpectrumLines.h"

#include "radio/Radio.h"

#include <algorithm>

namespace host
{
namespace
{
constexpr int kSlowestOfDevice = 25; // lines a second
constexpr int kMostAveraged = 30;
constexpr qint64 kSecondNs = 1000000000;
} // namespace

SpectrumLines::SpectrumLines(Radio &radio) : m_radio(radio)
{
    connect(&radio, &Radio::spectrumReady, this, &SpectrumLines::onSpectrum);
    connect(&radio, &Radio::centerChanged, this, &SpectrumLines::forget);
    connect(&radio, &Radio::rateChanged, this, &SpectrumLines::forget);
    m_sinceLine.start();
    setPerSecond(m_perSecond);
    m_radio.setSpectrumAveraging(m_averaging);
}

void SpectrumLines::setPerSecond(int lines)
{
    m_perSecond = std::clamp(lines, kSlowest, kFastest);
    m_radio.setSpectrumRate(std::max(m_perSecond, kSlowestOfDevice));
}

void SpectrumLines::setAveraging(int lines)
{
    m_averaging = std::clamp(lines, 1, kMostAveraged);
    m_radio.setSpectrumAveraging(m_averaging);
}

void SpectrumLines::setPeakHold(bool hold)
{
    m_isPeakHold = hold;
    m_peaks.clear();
}

void SpectrumLines::forget()
{
    m_peaks.clear();
}

void SpectrumLines::onSpectrum()
{
    // The device's lines come some milliseconds early or late; half a period decides.
    const qint64 period = kSecondNs / m_perSecond;
    const qint64 now = m_sinceLine.nsecsElapsed();
    if (m_perSecond < kSlowestOfDevice && now < m_dueNs - period / 4)
        return;
    m_dueNs = std::max(m_dueNs + period, now + period / 2);
    const SpectrumView view = m_radio.spectrum();
    if (view.count == 0)
        return;
    m_axis = {m_radio.centerHz(), m_radio.spanHz()};
    m_line.assign(view.spectrum, view.spectrum + view.count);
    m_waterfall.assign(view.waterfall, view.waterfall + view.count);
    if (m_isPeakHold) {
        if (m_peaks.size() != m_line.size())
            m_peaks = m_line;
        for (std::size_t i = 0; i < m_line.size(); ++i)
            m_peaks[i] = std::max(m_peaks[i], m_line[i]);
    }
    emit lineReady();
}
} // namespace host
