// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/SpectrumHistoryAverager.h"

#include "DspCore/spectrum/AveragerCommon.h"
#include "DspCore/spectrum/LineKernels.h"
#include "signal_primitives/ipps.h"

#include <algorithm>

namespace DspCore
{
namespace
{
// Lifts the mean to what the peaks of a noisy line look like.
constexpr REAL32 kOffsetDb = 0.7f;
} // namespace

SpectrumHistoryAverager::SpectrumHistoryAverager()
{
    mRows.reserve(30);
}

void SpectrumHistoryAverager::setAveragingSize(std::size_t size)
{
    mAveragingSize = limitedAveragingSize(size);
    reset();
}

void SpectrumHistoryAverager::setSpectrumSize(std::size_t size)
{
    if (size == mSpectrumSize)
        return;
    mSpectrumSize = size;
    mNewer.resize(size);
    mSum.resize(size);
    reset();
}

void SpectrumHistoryAverager::reset()
{
    mNextRow = 0;
    mRows.clear();
}

void SpectrumHistoryAverager::read(REAL32 *line, std::size_t size)
{
    if (mRows.empty() || size != mSpectrumSize)
        std::fill_n(line, size, kNoLineDb);
    else
        powerToDb(mPower, line, int(size), kOffsetDb, mScale);
}

REAL32 *SpectrumHistoryAverager::nextRow()
{
    while (mRows.size() <= mNextRow)
        mRows.emplace_back(mSpectrumSize);
    return mRows[mNextRow].data();
}

void SpectrumHistoryAverager::average(const REAL32 *line, MeanToPower meanToPower)
{
    const int size = int(mSpectrumSize);
    REAL32 *const row = nextRow();
    if (mNextRow == 0)
        beginTurn();
    const bool isLast = mNextRow + 1 == mRows.size();
    if (isLast) {
        std::copy_n(line, line == row ? 0 : size, row);
        ippsAdd_32f_I(row, mNewer.data(), size);
    } else {
        addLine(line, row, mNewer.data(), mRows[mNextRow + 1].data(), mSum.data(), size);
    }
    mNextRow = (mNextRow + 1) % mAveragingSize;

    mPower = isLast ? mNewer.data() : mSum.data();
    mScale = REAL32(1.0 / double(mRows.size()));
    if (meanToPower == nullptr)
        return;
    if (isLast)
        ippsCopy_32f(mNewer.data(), mSum.data(), size);
    ippsMulC_32f_I(mScale, mSum.data(), size);
    meanToPower(mSum.data(), size);
    mPower = mSum.data();
    mScale = 1.0f;
}

/// The lines of the last turn become sums from their row to the last one. Row 0 has its new line.
void SpectrumHistoryAverager::beginTurn()
{
    std::fill(mNewer.begin(), mNewer.end(), 0.0f);
    for (std::size_t row = mRows.size() - 1; row-- > 1;)
        ippsAdd_32f_I(mRows[row + 1].data(), mRows[row].data(), int(mSpectrumSize));
}
} // namespace DspCore
