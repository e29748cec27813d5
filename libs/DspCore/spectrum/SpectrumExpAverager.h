// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/spectrum/SpectrumAveragerAbstract.h"

#include <cstddef>
#include <vector>

namespace DspCore
{
/// A one-pole average of the power of each bin, in dB.
///
///     y = a x + a y,  a = 0.0068965517 n + 0.74 for averaging size n, 0.747..0.947
///
/// The weight of the new line is a as well, and not 1 - a, so a steady line comes out a / (1 - a)
/// times as strong: 4.7 dB at size 1, 12.5 dB at 30. An offset in dB that falls with n takes most
/// of it back.
class SpectrumExpAverager : public SpectrumAveragerAbstract
{
public:
    SpectrumExpAverager();

    void setAveragingSize(std::size_t size) override;
    std::size_t averagingSize() const override { return mAveragingSize; }
    void setSpectrumSize(std::size_t size) override;
    std::size_t spectrumSize() const override { return mSpectrumSize; }
    void reset() override;
    void write(REAL32 *line, std::size_t size) override;
    void read(REAL32 *line, std::size_t size) override;

    /// The curved part of the offset in dB for averaging size n, a cubic fitted to the display.
    float correct(float n) const;

private:
    void restart();
    float offsetDb() const;

    std::size_t mSpectrumSize = 4096;
    std::size_t mAveragingSize = 1;
    float mWeight = 0.0f;      // a
    float mCorrection = -9.0f; // dB, the curved part of the offset
    bool mHasLine = false;     // since the last reset
    std::vector<REAL32> mStates = std::vector<REAL32>(mSpectrumSize); // y
};
} // namespace DspCore
