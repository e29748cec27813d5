// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace Velmora
{
/// The host's ring of bytes, as far as a device sees it: it tells that it holds new data. What it
/// holds and how that is taken out is the host's.
class QRingBuffer8i : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    void readyRead();
};
} // namespace Velmora
