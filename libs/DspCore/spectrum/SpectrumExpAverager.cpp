// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/SpectrumExpAverager.h"

#include "DspCore/spectrum/AveragerCommon.h"
#include "processor/Clones.h"
#include "vm_library/source/log/Log.h"

#include <algorithm>

namespace DspCore
{
namespace
{
// Both terms carry `a`, see the class.
template <typename Filter>
[[gnu::always_inline]] inline void filter(
    Filter *filters, const float *line, float *output, std::size_t size)
{
    for (std::size_t n = 0; n < size; ++n) {
        Filter &f = filters[n];
        f.y = f.a * line[n] + f.a * f.y;
        output[n] = f.y;
    }
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
    mOutput.resize(size);
    mFilters.resize(size);
    restart();
}

void SpectrumExpAverager::restart()
{
    const auto n = double(mAveragingSize);
    mCorrection = correct(float(n));
    const auto a = float(n * 0.0068965517 + 0.74);
    std::fill(mFilters.begin(), mFilters.end(), Filter{a, 1.0f - a, 0.0f});
    ippsZero_32f(mOutput.data(), int(mOutput.size()));
}

void SpectrumExpAverager::reset()
{
    for (Filter &f : mFilters)
        f.y = 0.0f;
    ippsZero_32f(mOutput.data(), int(mOutput.size()));
}

PROCESSOR_CLONES
void SpectrumExpAverager::update(const REAL32 *line)
{
    filter(mFilters.data(), line, mOutput.data(), mOutput.size());
}

void SpectrumExpAverager::write(REAL32 *line, std::size_t size)
{
    if (size != mSpectrumSize) {
        vm::log::debug("virtual void DspCore::SpectrumExpAverager::write(REAL32 *, std::size_t)",
            " incorrect input buffer size!");
        return;
    }
    update(line);
    const int count = int(size);
    powerToDb(mOutput.data(), count);
    ippsAddC_32f_I(offsetDb(), mOutput.data(), count);
}

void SpectrumExpAverager::read(REAL32 *line, std::size_t size)
{
    if (mOutput.empty() || size != mSpectrumSize)
        std::fill_n(line, size, kNoLineDb);
    else
        std::copy_n(mOutput.data(), size, line);
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
