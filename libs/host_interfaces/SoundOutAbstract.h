// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host_interfaces/AudioCallback.h"

#include <QObject>

/// The host's sound-card output. GUI thread; the callback is called on the audio thread.
///
/// The reserved operations are the host's own and hold their places in its table of virtual
/// operations.
class SoundOutAbstract : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Attaches a source; an empty function detaches it. When this returns, the old one is called
    /// no more.
    virtual void setAudioCallback(AudioCallback callback) = 0;

    virtual void reserved2() = 0;
    virtual void reserved3() = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual void reserved6() = 0;
    virtual void reserved7() = 0;

    virtual void setLevel(float) { }

Q_SIGNALS:
    void opened();
    void closed();
    void bufferSizeChanged(uint size);
};
