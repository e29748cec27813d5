// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <QObject>

/// The host's sink for all audio that goes to the sound card, as BridgeAbstract hands it out: a
/// second road beside the callback, which the device pushes.
class BridgeAudioServerAbstract : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// True when the device's stream starts, false when it has ended. On the thread that starts and
    /// stops the stream.
    virtual void setEnabled(bool enabled) = 0;

    /// Takes a block: count stereo pairs at the sound-card rate. On the device's engine thread,
    /// which waits meanwhile.
    virtual void write(int count, COMPLEX32 *block) = 0;
};
