// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

/// Tells a listener of several rings which of them holds new data.
class RingBufferSignal : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    void readyRead(RingBufferSignal *ring);
};
