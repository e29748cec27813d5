// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/ZephrinMDSP.h"

#include "ZephrinMFunctions.h"

int ZephrinMDSP::currentBand(unsigned long receiver) const
{
    const double hz = m_dds.at(receiver) + m_receiver.downConverter(0);
    return m_functions->getBandFromFreq(hz);
}
