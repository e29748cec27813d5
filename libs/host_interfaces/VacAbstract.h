// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host_interfaces/AudioCallback.h"

#include <QObject>

/// A virtual audio cable of the host. GUI thread; the callback is called on the audio thread.
///
/// The reserved operations are the host's own and hold their places in its table of virtual
/// operations.
class VacAbstract : public QObject
{
    Q_OBJECT

public:
    struct AudioParams
    {
        quint64 sampleRate = 0; // Hz
    };

    using QObject::QObject;

    /// Attaches a source; an empty function detaches it. When this returns, the old one is called
    /// no more.
    virtual void setAudioCallback(AudioCallback callback) = 0;

    virtual void reserved2() = 0;
    virtual void reserved3() = 0;
    virtual void reserved4() = 0;

    /// What the cable runs at; valid from opened() to closed().
    virtual AudioParams audioParams() = 0;

    virtual void setInputGain(float) { }
    virtual void setOutputOutput(float) { }

Q_SIGNALS:
    void opened();
    void closed();
    void bufferSizeChanged(uint size);
};
