// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/spectrum/Spectrum.h"
#include "DspCore/types.h"
#include "thread_pool/ThreadPool.h"

#include <vector>

namespace bench
{
/// Panorama lines at a rate that counts in seconds of signal.
///
/// The engine makes its lines by the clock on the wall, so that a stream which runs a hundred times
/// as fast as real time gets a hundredth of them. This one makes them when that much signal has
/// passed, of the same size and by the same code. It is fed with what the window of a line needs
/// and with no more; all its work is done on the caller's thread.
class StreamSpectrum
{
public:
    StreamSpectrum(double rateHz, double linesPerSecond);

    /// Takes a block of the stream and makes the line that is due.
    void append(COMPLEX *block, int count);

    /// Lines made so far.
    long lines() const { return m_lines; }

private:
    tp::ThreadPool m_pool{tp::ThreadPoolOptions{.workerCount = 1}};
    DspCore::Spectrum m_spectrum{m_pool, 0};
    std::vector<float> m_line;
    std::vector<float> m_waterfall;
    double m_samplesPerLine;
    double m_toNext; // samples
    long m_lines = 0;
};
} // namespace bench
