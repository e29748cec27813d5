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
///
///     row      0    1    2    3   |4|  5     6     7
///              new lines, with     |   sums of the old lines from here to the last row,
///              a running sum       |   made when row 0 was replaced
///                                  '-- the line at hand: all = running sum + row 5
///
/// So a line costs two additions of rows and one at the turn, however many rows there are. Nothing
/// is ever subtracted: what a strong signal leaves in a sum goes with it.
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

    /// Puts a line into its row, unless it is there, and makes the mean of all.
    void average(const REAL32 *line, MeanToPower meanToPower);

private:
    void beginTurn();

    std::size_t mSpectrumSize = 4096;
    std::size_t mAveragingSize = 1;
    std::size_t mNextRow = 0;
    std::vector<std::vector<REAL32>> mRows;
    std::vector<REAL32> mNewer = std::vector<REAL32>(mSpectrumSize); // sum of this turn's lines
    std::vector<REAL32> mSum = std::vector<REAL32>(mSpectrumSize);
    const REAL32 *mPower = nullptr; // what read() shows, times
    REAL32 mScale = 1.0f;
};
} // namespace DspCore
