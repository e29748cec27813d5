// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QThread>

/// The host's network sender for line-out audio.
///
/// The host's own; a device never calls it. Its operations stand for their places in the host's
/// table of virtual operations.
class LineoutServerAbstract : public QThread
{
    Q_OBJECT

public:
    using QThread::QThread;

    virtual void reserved1() = 0;
};
