// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PictureAxis.h"

#include <optional>
#include <span>

namespace host
{
/// Where a carrier is and how strong, more exactly than the bins tell.
struct SpectrumPeak
{
    double frequencyHz = 0.0;
    double levelDb = 0.0;
};

/// Reads stations out of a spectrum line.
///
/// The largest bin and its two neighbours, in decibels, are taken for a parabola and its top for
/// the peak (J. O. Smith, "Spectral Audio Signal Processing", quadratic interpolation of spectral
/// peaks). A carrier alone reads right to 0.04 dB under a four-term window such as
/// Blackman-Nuttall, to 0.02 dB under Hann with as many zeros appended, to 0.33 dB under Hann.
class PeakFinder
{
public:
    /// The levels, in decibels, must outlive the finder.
    PeakFinder(const PictureAxis &axis, std::span<const float> levelsDb)
        : m_axis(axis), m_levels(levelsDb)
    { }

    /// The largest peak whose bin is at most withinHz from nearHz; at least the bin nearest to it
    /// is looked at. Nothing outside the line and where no level there is a number. Where the line
    /// rises further outside the searched part, the largest bin itself.
    std::optional<SpectrumPeak> peakNear(double nearHz, double withinHz) const;

private:
    SpectrumPeak interpolated(std::size_t bin) const;

    PictureAxis m_axis;
    std::span<const float> m_levels;
};
} // namespace host
