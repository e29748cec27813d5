// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/HostLineOut.h"

namespace host
{
bool HostLineOut::open(quint64 sampleRateHz)
{
    if (sampleRateHz == 0)
        return false;
    if (m_isOpen && m_sampleRateHz == sampleRateHz)
        return true;
    close();
    m_sampleRateHz = sampleRateHz;
    Q_EMIT opened(); // on which the device drops what it had for the last opening
    m_isOpen = true;
    return true;
}

void HostLineOut::close()
{
    if (m_isOpen.exchange(false))
        Q_EMIT closed();
}
} // namespace host
