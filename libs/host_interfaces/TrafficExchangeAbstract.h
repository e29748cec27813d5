// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

/// The host's meter of network traffic.
///
/// The host's own; a device never calls it. Its operations stand for their places in the host's
/// table of virtual operations.
class TrafficExchangeAbstract : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void reserved1() = 0;
    virtual void reserved2() = 0;
};
