// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/spectrum/SpectrumAveragerAbstract.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace DspCore
{
/// Three averagers, of which one is in use.
///
/// Settings go to all three; lines go to the selected one only. So another selection shows at once
/// what that averager holds: nothing but a cleared line until the next write(), if it has received
/// no line since the last reset().
class SpectrumAverager
{
public:
    /// The host passes these numbers.
    enum Type : int {
        Linear = 0,
        Rms = 1,
        Exponential = 2,
    };

    SpectrumAverager();

    /// Limited to the three there are.
    void setType(Type type);
    Type type() const { return mType; }

    void setAveragingSize(std::size_t size);
    std::size_t averagingSize() const;
    void setSpectrumSize(std::size_t size);
    std::size_t spectrumSize() const;
    void reset();
    void write(REAL32 *line, std::size_t size);
    void read(REAL32 *line, std::size_t size);

private:
    SpectrumAveragerAbstract &selected() const;

    Type mType = Linear;
    std::vector<std::shared_ptr<SpectrumAveragerAbstract>> mAveragers; // in the order of Type
};
} // namespace DspCore
