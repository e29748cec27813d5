// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace Velmora
{
/// The host's ring of doubles, as far as a device sees it: it tells that it holds new data. What it
/// holds and how that is taken out is the host's.
class QRingBuffer64f : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    void readyRead();
};
} // namespace Velmora
