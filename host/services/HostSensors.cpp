// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/HostSensors.h"

namespace host
{
void HostSensors::rxAdc(uint receiver, float re, float im)
{
    m_inputReDb = re;
    m_inputImDb = im;
    Q_EMIT rxAdcChanged(receiver, re, im);
}

void HostSensors::rxDbm(uint receiver, uint channel, float value)
{
    if (channel < m_channelDbm.size())
        m_channelDbm[channel] = value;
    Q_EMIT rxDbmChanged(receiver, channel, value);
}

void HostSensors::wfmStereo(uint receiver, bool state)
{
    if (m_stereo.exchange(state) != state)
        Q_EMIT wfmStereoChanged(receiver, state);
    m_ledger.endBlock();
}
} // namespace host
