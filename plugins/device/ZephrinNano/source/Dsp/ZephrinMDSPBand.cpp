// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/ZephrinMDSP.h"

#include "ZephrinMFunctions.h"

int ZephrinMDSP::currentBand(unsigned long receiver) const
{
    const double hz = m_dds.at(receiver) + m_receiver.downConverter(0);
    return m_functions->getBandFromFreq(hz);
}

bool ZephrinMDSP::isCurrentBand(unsigned long band) const
{
    return static_cast<unsigned long>(currentBand(0)) == band;
}

void ZephrinMDSP::onRnfParam(
    unsigned long band, unsigned long index, bool enable, double frequency, double width)
{
    if (!isCurrentBand(band))
        return;
    auto &notch = m_notches.at(0);
    notch->setEnable(index, enable);
    notch->setFrequency(index, frequency);
    notch->setWidth(index, width);
}

void ZephrinMDSP::onRnfEnabled(unsigned long band, bool enabled)
{
    if (isCurrentBand(band))
        m_notches.at(0)->setActive(enabled);
}
