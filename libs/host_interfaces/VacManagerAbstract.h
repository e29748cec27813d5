// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host_interfaces/VacAbstract.h"

#include <QObject>
#include <memory>

/// The host's list of virtual audio cables. GUI thread.
///
/// The reserved operations are the host's own and hold their places in its table of virtual
/// operations.
class VacManagerAbstract : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void reserved1() = 0;
    virtual void reserved2() = 0;

    /// The output of an index from 0, shared with the host; a device asks for 0 only.
    virtual std::shared_ptr<VacAbstract> vac(int index) = 0;
};
