// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <QThread>

/// The host's network sender for the IQ stream. The device writes to it on its engine thread; the
/// host owns its thread.
///
/// The reserved operations are the host's own and hold their places in its table of virtual
/// operations.
class IqServerAbstract : public QThread
{
    Q_OBJECT

public:
    using QThread::QThread;

    /// Sends a block of a channel (0 for the only receiver): count samples, full scale 1.0.
    virtual void write(int channel, COMPLEX *block, int count) = 0;

    /// True if somebody listens; the device writes only then.
    virtual bool isOpen() = 0;

    virtual void reserved3() = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual void reserved6() = 0;
};
