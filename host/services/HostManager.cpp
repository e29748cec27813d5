// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/HostManager.h"

namespace host
{
HostManager::HostManager(
    SensorsAbstract *sensors, const PreampControl::Limits &preampLimits, QWidget *parentWidget)
    : m_preamp(preampLimits), m_parentWidget(parentWidget)
{
    this->sensors = sensors;
    connect(this, &DeviceManagerAbstract::adcOverflow, &m_preamp, &PreampControl::countOverflow);
    connect(this, &DeviceManagerAbstract::deltaAtt, &m_preamp, &PreampControl::applyDelta);
    connect(&m_preamp, &PreampControl::preampValueChanged, this,
        &DeviceManagerAbstract::preampValueChanged);
}
} // namespace host
