// SPDX-License-Identifier: GPL-3.0-or-later
#include "PeakFinder.h"

#include <algorithm>
#include <cmath>

namespace host
{
std::optional<SpectrumPeak> PeakFinder::peakNear(double nearHz, double withinHz) const
{
    const double last = double(m_levels.size()) - 1.0;
    const double centre = std::round(m_axis.indexOf(nearHz, m_levels.size()));
    if (m_levels.empty() || !(centre >= 0.0 && centre <= last))
        return std::nullopt;
    const double reach = withinHz / m_axis.binHz(m_levels.size());
    const double place = m_axis.indexOf(nearHz, m_levels.size());
    const auto from = std::size_t(std::clamp(std::ceil(place - reach), 0.0, centre));
    const auto to = std::size_t(std::clamp(std::floor(place + reach), centre, last));
    std::optional<std::size_t> largest;
    for (std::size_t bin = from; bin <= to; ++bin)
        if (!std::isnan(m_levels[bin]) && (!largest || m_levels[bin] > m_levels[*largest]))
            largest = bin;
    if (!largest)
        return std::nullopt;
    return interpolated(*largest);
}

SpectrumPeak PeakFinder::interpolated(std::size_t bin) const
{
    const double top = m_levels[bin];
    const SpectrumPeak plain{m_axis.frequencyOf(double(bin), m_levels.size()), top};
    if (bin == 0 || bin + 1 == m_levels.size())
        return plain;
    const double below = m_levels[bin - 1];
    const double above = m_levels[bin + 1];
    const double bend = below - 2.0 * top + above;
    // Neighbours of no power at all, a plateau and a slope have no parabola with a top here.
    if (!std::isfinite(bend) || !(bend < 0.0) || below > top || above > top)
        return plain;
    const double offset = 0.5 * (below - above) / bend; // -0.5..0.5 of a bin
    return {m_axis.frequencyOf(double(bin) + offset, m_levels.size()),
        top - 0.25 * (below - above) * offset};
}
} // namespace host
