// SPDX-License-Identifier: GPL-3.0-or-later
#include "peer/StreamSpectrum.h"

namespace
{
constexpr int kSize = 4096;         // bins of a line, as in the engine
constexpr int kLongestPause = 1000; // ms, beyond any: of the lines made by the clock
} // namespace

namespace bench
{
StreamSpectrum::StreamSpectrum(double rateHz, double linesPerSecond)
    : m_samplesPerLine(rateHz / linesPerSecond), m_toNext(m_samplesPerLine)
{
    m_spectrum.setSize(kSize);
    m_spectrum.setUpdateInterval(kLongestPause);
    m_spectrum.open();
}

void StreamSpectrum::append(COMPLEX *block, int count)
{
    if (m_toNext < kSize + count)
        m_spectrum.append(block, count);
    m_toNext -= count;
    if (m_toNext > 0.0)
        return;
    m_toNext += m_samplesPerLine;
    m_spectrum.makeFrame();
    m_spectrum.read(m_line, m_waterfall);
    ++m_lines;
}
} // namespace bench
