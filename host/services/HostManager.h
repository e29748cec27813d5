// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/PreampControl.h"

#include "host_interfaces/DeviceManagerAbstract.h"

#include <QMenu>
#include <QPointer>
#include <QWidget>

namespace host
{
/// The host as the device's manager: keeps what the device shows and tells, and closes the loop of
/// the automatic preamp. GUI thread.
class HostManager : public DeviceManagerAbstract
{
    Q_OBJECT

public:
    /// The sensors must outlive the manager; the parent of message boxes may be null.
    HostManager(SensorsAbstract *sensors, const PreampControl::Limits &preampLimits,
        QWidget *parentWidget = nullptr);

    /// The device's menu; null before there is one and after the device has deleted it.
    QMenu *deviceMenu() const { return m_deviceMenu; }
    void setDeviceMenu(QMenu *menu) override { m_deviceMenu = menu; }

    QWidget *parentWidget() override { return m_parentWidget; }

    /// Asks the device whether a receiver is plugged in; false without a device.
    bool isDeviceAvailable() { return Q_EMIT sDeviceAvalible(); }

    PreampControl &preamp() { return m_preamp; }

public Q_SLOTS:
    /// Nobody listens: the device's servers have no clients here.
    void setServerStatus(int) override { }

private:
    PreampControl m_preamp;
    QPointer<QMenu> m_deviceMenu;
    QPointer<QWidget> m_parentWidget;
};
} // namespace host
