// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <cstddef>

namespace DspCore
{
/// Averages lines of power over time: takes one line of linear power at a time and holds the
/// average of the last ones in dB.
///
/// A line has spectrumSize() bins, 4096 before the first setSpectrumSize(). Full scale is power 1,
/// and a bin without power reads -170 dB and the averager's own offset. Not thread-safe; the owner
/// serialises.
class SpectrumAveragerAbstract
{
public:
    virtual ~SpectrumAveragerAbstract() = default;

    /// How many lines the average reaches back, limited to 1..30. Starts the average anew, also
    /// with the present value.
    virtual void setAveragingSize(std::size_t size) = 0;
    virtual std::size_t averagingSize() const = 0;

    /// Bins of a line. A new size starts the average anew; the present one changes nothing.
    virtual void setSpectrumSize(std::size_t size) = 0;
    virtual std::size_t spectrumSize() const = 0;

    /// Forgets the lines, keeps the settings.
    virtual void reset() = 0;

    /// Takes a line of linear power. A line of another size is reported and changes nothing.
    virtual void write(REAL32 *line, std::size_t size) = 0;

    /// Copies the average in dB, or fills the line with -180.0 while there is none and when the
    /// size is not that of the average.
    virtual void read(REAL32 *line, std::size_t size) = 0;
};
} // namespace DspCore
