// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace Velmora
{
// The host's rings, as far as a device sees them: each tells that it holds new data. What it holds
// and how that is taken out is the host's.

/// Floats.
class QRingBuffer32f : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    void readyRead();
};

/// Doubles.
class QRingBuffer64f : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    void readyRead();
};

/// Pairs of floats.
class QRingBuffer32fc : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    void readyRead();
};

/// Pairs of doubles.
class QRingBuffer64fc : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    void readyRead();
};

/// Bytes.
class QRingBuffer8i : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    void readyRead();
};
} // namespace Velmora
