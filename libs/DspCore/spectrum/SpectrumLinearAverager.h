// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/spectrum/SpectrumHistoryAverager.h"

namespace DspCore
{
/// The mean of the power of the last averagingSize() lines, in dB, plus 0.7 dB.
class SpectrumLinearAverager : public SpectrumHistoryAverager
{
public:
    void write(REAL32 *line, std::size_t size) override;
};
} // namespace DspCore
