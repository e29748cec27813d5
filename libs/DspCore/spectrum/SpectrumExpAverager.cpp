// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/SpectrumExpAverager.h"

#include "DspCore/spectrum/AveragerCommon.h"
#include "DspCore/spectrum/LineKernels.h"
#include "processor/Clones.h"
#include "vm_library/source/log/Log.h"

#include <algorithm>

namespace DspCore
{
namespace
{
constexpr REAL32 kFirstLineDb = 0.0f; // before the first line

// Both terms carry `a`, see the class.
PROCESSOR_CLONES
void filter(float a, const float *line, float *states, std::size_t size)
{
#pragma GCC ivdep
    for (std::size_t n = 0; n < size; ++n)
        states[n] = a * line[n] + a * states[n];
}
} // namespace

SpectrumExpAverager::SpectrumExpAverager()
{
    setAveragingSize(mAveragingSize);
}

void SpectrumExpAverager::setAveragingSize(std::size_t size)
{
    mAveragingSize = limitedAveragingSize(size);
    restart();
}

void SpectrumExpAverager::setSpectrumSize(std::size_t size)
{
    if (size == mSpectrumSize)
        return;
    mSpectrumSize = size;
    mStates.resize(size);
    restart();
}

void SpectrumExpAverager::restart()
{
    const auto n = double(mAveragingSize);
    mCorrection = correct(float(n));
    mWeight = float(n * 0.0068965517 + 0.74);
    reset();
}

void SpectrumExpAverager::reset()
{
    std::fill(mStates.begin(), mStates.end(), 0.0f);
    mHasLine = false;
}

void SpectrumExpAverager::write(REAL32 *line, std::size_t size)
{
    if (size != mSpectrumSize) {
        vm::log::debug("virtual void DspCore::SpectrumExpAverager::write(REAL32 *, std::size_t)",
            " incorrect input buffer size!");
        return;
    }
    filter(mWeight, line, mStates.data(), size);
    mHasLine = true;
}

void SpectrumExpAverager::read(REAL32 *line, std::size_t size)
{
    if (mStates.empty() || size != mSpectrumSize)
        std::fill_n(line, size, kNoLineDb);
    else if (!mHasLine)
        std::fill_n(line, size, kFirstLineDb);
    else
        powerToDb(mStates.data(), line, int(size), offsetDb());
}

float SpectrumExpAverager::correct(float n) const
{
    const double size = n;
    return float(0.0449 * size + (0.005 * size * size - 0.0002 * size * size * size) - 0.01);
}

float SpectrumExpAverager::offsetDb() const
{
    return float((-0.27 * double(mAveragingSize) - 3.6) + double(mCorrection));
}
} // namespace DspCore
