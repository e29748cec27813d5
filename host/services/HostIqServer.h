// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stream/IqListener.h"
#include "stream/StreamLedger.h"

#include "host_interfaces/IqServerAbstract.h"
#include "vm_library/source/containers/SpinLock.h"

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

    void write(int, COMPLEX *block, int count) override
    {
        m_ledger.beginBlock(block, count);
        const SpinLocker locker(m_lock);
        if (m_listener)
            m_listener->pushIq(block, count);
    }

    /// Gets each block as well, on the engine's thread. Null: nobody does. The one before is not in
    /// use any more when the call returns.
    void setListener(IqListener *listener)
    {
        const SpinLocker locker(m_lock);
        m_listener = listener;
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
    SpinLock m_lock;
    IqListener *m_listener = nullptr; // guarded by m_lock
};
} // namespace host
