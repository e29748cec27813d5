// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

/// A sound device of the host, which tells devices nothing about it.
class SoundDeviceAbstract : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
};
