// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stream/StreamLedger.h"

#include "host_interfaces/IqServerAbstract.h"

namespace host
{
/// Where the engine pushes the IQ of each block before the receiver gets it: books into the ledger
/// that a block begins.
class HostIqServer : public IqServerAbstract
{
    Q_OBJECT

public:
    /// ledger must outlive the server.
    explicit HostIqServer(StreamLedger &ledger) : m_ledger(ledger) { }

    void write(int, COMPLEX *block, int count) override { m_ledger.beginBlock(block, count); }

    /// Always: the ledger listens.
    bool isOpen() override { return true; }

    void reserved3() override { }
    void reserved4() override { }
    void reserved5() override { }
    void reserved6() override { }

private:
    void run() override { } // sends nothing, so its thread is never started

    StreamLedger &m_ledger;
};
} // namespace host
