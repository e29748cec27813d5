// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/GuardedFunction.h"
#include "stream/StreamLedger.h"

#include "host_interfaces/IqServerAbstract.h"

namespace host
{
/// Where the engine pushes the IQ of each block before the receiver gets it: books into the ledger
/// that a block begins, then hands the block to a sink, if there is one.
class HostIqServer : public IqServerAbstract
{
    Q_OBJECT

public:
    using Sink = std::function<void(int channel, const COMPLEX *block, int count)>;

    /// ledger must outlive the server.
    explicit HostIqServer(StreamLedger &ledger) : m_ledger(ledger) { }

    /// An empty sink takes the present one away; it is called no more when this returns. The sink
    /// runs on the engine thread, which waits meanwhile. Any thread but that one.
    void setSink(Sink sink) { m_sink.set(std::move(sink)); }

    void write(int channel, COMPLEX *block, int count) override
    {
        m_ledger.beginBlock(block, count);
        m_sink.call(channel, block, count);
    }

    /// Always: the ledger listens.
    bool isOpen() override { return true; }

    void reserved3() override { }
    void reserved4() override { }
    void reserved5() override { }
    void reserved6() override { }

private:
    void run() override { } // sends nothing, so its thread is never started

    StreamLedger &m_ledger;
    GuardedFunction<void(int, const COMPLEX *, int)> m_sink;
};
} // namespace host
