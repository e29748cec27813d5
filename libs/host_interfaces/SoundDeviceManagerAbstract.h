// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

/// The host's list of sound devices.
///
/// The host's own; a device never calls it. Its operations stand for their places in the host's
/// table of virtual operations.
class SoundDeviceManagerAbstract : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void reserved1() = 0;
    virtual void reserved2() = 0;
};
