// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/spectrum/SpectrumAveragerAbstract.h"

#include <cstddef>
#include <vector>

namespace DspCore
{
/// The part that the linear and the RMS averager share: the last lines as rows, and their mean.
///
/// The rows fill one by one after a reset and are then replaced in turn, so that the mean is that
/// of the lines there are and never waits for a full history. write() allocates while rows are
/// missing.
class SpectrumHistoryAverager : public SpectrumAveragerAbstract
{
public:
    void setAveragingSize(std::size_t size) override;
    std::size_t averagingSize() const override { return mAveragingSize; }
    void setSpectrumSize(std::size_t size) override;
    std::size_t spectrumSize() const override { return mSpectrumSize; }
    void reset() override;
    void read(REAL32 *line, std::size_t size) override;

protected:
    SpectrumHistoryAverager();

    /// The row that the next line belongs into, spectrumSize() elements.
    REAL32 *nextRow();

    /// Turns the mean of stored values into power, in place; null if it is power.
    using MeanToPower = void (*)(REAL32 *mean, int size);

    /// Makes the output line of all rows and moves on to the next row.
    void average(MeanToPower meanToPower);

private:
    void averagePiece(std::size_t first, int count, MeanToPower meanToPower);

    std::size_t mSpectrumSize = 4096;
    std::size_t mAveragingSize = 1;
    std::size_t mNextRow = 0;
    std::vector<std::vector<REAL32>> mRows;
    std::vector<REAL32> mOutput = std::vector<REAL32>(mSpectrumSize);
};
} // namespace DspCore
