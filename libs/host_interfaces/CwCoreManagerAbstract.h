// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

/// The host's list of Morse coders.
///
/// The host's own; a device never calls it. Its operations stand for their places in the host's
/// table of virtual operations.
class CwCoreManagerAbstract : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void reserved1() = 0;
};
