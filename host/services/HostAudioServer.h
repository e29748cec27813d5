// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/GuardedFunction.h"

#include "host_interfaces/AudioServerAbstract.h"

namespace host
{
/// Where the engine pushes demodulated audio for listeners elsewhere: hands it to a sink. The
/// device has one channel, 0.
class HostAudioServer : public AudioServerAbstract
{
    Q_OBJECT

public:
    using Sink = std::function<void(const COMPLEX *block, int count)>;

    using AudioServerAbstract::AudioServerAbstract;

    /// An empty sink takes the present one away; it is called no more when this returns. The sink
    /// runs on the engine thread, which waits meanwhile. Any thread but that one.
    void setSink(Sink sink) { m_sink.set(std::move(sink)); }

    /// True for channel 0 while there is a sink.
    bool isOpen(int channel) override { return channel == 0 && m_sink.isSet(); }

    void write(int channel, COMPLEX *block, int count) override
    {
        if (channel == 0)
            m_sink.call(block, count);
    }

    void reserved1() override { }
    void reserved4() override { }
    void reserved5() override { }
    void reserved6() override { }

private:
    void run() override { } // sends nothing by itself, so its thread is never started

    GuardedFunction<void(const COMPLEX *, int)> m_sink;
};
} // namespace host
