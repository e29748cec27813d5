// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

/// Base of the host's plugins that are no devices; a device derives from DeviceAbstract instead.
///
/// The host's own; a device never calls it. Its operations stand for their places in the host's
/// table of virtual operations.
class PluginAbstract : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void reserved1() = 0;
    virtual void reserved2() = 0;
    virtual void reserved3() = 0;
};
