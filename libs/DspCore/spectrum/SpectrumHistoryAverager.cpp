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

// The mean is made piece by piece: while all rows are added to a piece of this many bins, it stays
// in the nearest cache.
constexpr std::size_t kPiece = 2048;
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
    mOutput.resize(size);
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
        std::copy_n(mOutput.data(), size, line);
}

REAL32 *SpectrumHistoryAverager::nextRow()
{
    while (mRows.size() <= mNextRow)
        mRows.emplace_back(mSpectrumSize);
    return mRows[mNextRow].data();
}

void SpectrumHistoryAverager::average(MeanToPower meanToPower)
{
    for (std::size_t first = 0; first < mSpectrumSize; first += kPiece)
        averagePiece(first, int(std::min(kPiece, mSpectrumSize - first)), meanToPower);
    mNextRow = (mNextRow + 1) % mAveragingSize;
}

void SpectrumHistoryAverager::averagePiece(std::size_t first, int count, MeanToPower meanToPower)
{
    REAL32 *const piece = mOutput.data() + first;
    const REAL32 *const oldest = mRows.front().data() + first;
    if (mRows.size() == 1 && meanToPower == nullptr)
        return powerToDb(oldest, piece, count, kOffsetDb);
    ippsCopy_32f(oldest, piece, count);
    for (std::size_t row = 1; row < mRows.size(); ++row)
        ippsAdd_32f_I(mRows[row].data() + first, piece, count);
    ippsMulC_32f_I(REAL32(1.0 / double(mRows.size())), piece, count);
    if (meanToPower != nullptr)
        meanToPower(piece, count);
    powerToDb(piece, piece, count, kOffsetDb);
}
} // namespace DspCore
