// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <span>

namespace host
{
/// Running rms and peak of a signal in decibels relative to full scale: IQ of magnitude 1 and audio
/// that is always at full scale have an rms of 0 dBFS.
///
/// One thread adds, any thread reads. A reader that comes between the stores of one add() is off by
/// one block, which a meter may be.
class Level
{
public:
    static constexpr double kSilenceDb = -200.0; ///< what no signal at all reads

    /// Adds a block: the sum of its squares, its largest absolute value, the number of samples.
    void add(double squares, double peak, std::uint64_t samples)
    {
        m_squares = m_squares + squares;
        m_peak = std::max(m_peak.load(), peak);
        m_samples = m_samples + samples;
    }

    /// Adds values of full scale 1.
    void add(std::span<const float> values)
    {
        double squares = 0.0, peak = 0.0;
        for (const double value : values) {
            squares += value * value;
            peak = std::max(peak, std::abs(value));
        }
        add(squares, peak, values.size());
    }

    double rmsDb() const
    {
        const std::uint64_t samples = m_samples;
        return decibels(samples == 0 ? 0.0 : std::sqrt(m_squares / double(samples)));
    }
    double peakDb() const { return decibels(m_peak); }

private:
    static double decibels(double ratio)
    {
        return ratio > 0.0 ? std::max(kSilenceDb, 20.0 * std::log10(ratio)) : kSilenceDb;
    }

    std::atomic<double> m_squares = 0.0;
    std::atomic<double> m_peak = 0.0;
    std::atomic<std::uint64_t> m_samples = 0;
};
} // namespace host
