// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QMenu;
class QWidget;
class SensorsAbstract;

/// The part of the host that shows and steers devices, given to DeviceAbstract::setManager(). GUI
/// thread.
class DeviceManagerAbstract : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Takes the device's pop-up menu for the tool bar. The menu stays the device's.
    virtual void setDeviceMenu(QMenu *menu) = 0;

    /// Parent for the device's message boxes.
    virtual QWidget *parentWidget() = 0;

    bool hideSpectrumSlopes = false;    // the panorama leaves out the slopes of the input filter
    SensorsAbstract *sensors = nullptr; // not owned

public Q_SLOTS:
    /// 0 disconnected, 2 connected.
    virtual void setServerStatus(int status) = 0;

Q_SIGNALS:
    void apfChanged(quint32 receiver, bool state);
    void dseChanged(quint32 receiver, bool state);
    void preampValueChanged(float value);
    void waterfallFilterChanged(bool state);
    void display4kModeChanged(bool state);
    void updateStyleGuiControls();

    /// Asks the device whether a receiver is plugged in. The device connects directly, so the
    /// emission returns its answer.
    bool sDeviceAvalible();

    void hideSpectrumSlopesChanged(bool state);

    /// Relays: the device raises them through its automatic preamp.
    void adcOverflow();
    void deltaAtt(int delta);
};
