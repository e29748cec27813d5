// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "thread_pool/ThreadPool.h"

#include <QObject>

class BridgeAudioServerAbstract;
class IQRecorderConfigure;
class LineOutManagerAbstract;
class RadioNotchFilterControlAbstract;
class SoundOutAbstract;
class VacManagerAbstract;

/// The host's services for a device, given to DeviceAbstract::init() and valid for the device's
/// life. GUI thread. No operation returns null; the objects are the host's.
///
/// The reserved operations are the host's own and hold their places in its table of virtual
/// operations.
class BridgeAbstract : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void reserved1() = 0;
    virtual void reserved2() = 0;

    /// The sound-card output.
    virtual SoundOutAbstract *soundOut() = 0;

    virtual void reserved4() = 0;

    virtual VacManagerAbstract *vacManager() = 0;
    virtual LineOutManagerAbstract *lineOutManager() = 0;

    /// The pool that the host and its devices share for short background jobs.
    virtual tp::ThreadPoolImpl<tp::FixedFunction<void(), 128>, tp::MPMCBoundedQueue> &
    threadPool() = 0;

    virtual void reserved8() = 0;

    /// Where IQ recordings go, and in which format.
    virtual IQRecorderConfigure *iqRecorderConfigure() = 0;

    virtual RadioNotchFilterControlAbstract *radioNotchControl() = 0;

    /// The run switch of the stream and the sink for sound-card audio. Also called on the device's
    /// engine thread.
    virtual BridgeAudioServerAbstract *audioServer() = 0;

Q_SIGNALS:
    void switchedDisplayDpi(bool highDpi);
    void atuAvalibleChanged(bool avalible);
    void atuEnableChanged(bool enable);
    void atuLock();
    void atuUnlock();
};
