// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/SpectrumAverager.h"

#include "DspCore/spectrum/SpectrumExpAverager.h"
#include "DspCore/spectrum/SpectrumLinearAverager.h"
#include "DspCore/spectrum/SpectrumRmsAverager.h"

#include <algorithm>

namespace DspCore
{
SpectrumAverager::SpectrumAverager()
    : mAveragers{std::make_shared<SpectrumLinearAverager>(),
        std::make_shared<SpectrumRmsAverager>(), std::make_shared<SpectrumExpAverager>()}
{ }

void SpectrumAverager::setType(Type type)
{
    mType = std::clamp(type, Linear, Exponential);
}

void SpectrumAverager::setAveragingSize(std::size_t size)
{
    for (const auto &averager : mAveragers)
        averager->setAveragingSize(size);
}

std::size_t SpectrumAverager::averagingSize() const
{
    return selected().averagingSize();
}

void SpectrumAverager::setSpectrumSize(std::size_t size)
{
    for (const auto &averager : mAveragers)
        averager->setSpectrumSize(size);
}

std::size_t SpectrumAverager::spectrumSize() const
{
    return selected().spectrumSize();
}

void SpectrumAverager::reset()
{
    for (const auto &averager : mAveragers)
        averager->reset();
}

void SpectrumAverager::write(REAL32 *line, std::size_t size)
{
    selected().write(line, size);
}

void SpectrumAverager::read(REAL32 *line, std::size_t size)
{
    selected().read(line, size);
}

SpectrumAveragerAbstract &SpectrumAverager::selected() const
{
    return *mAveragers.at(std::size_t(mType));
}
} // namespace DspCore
