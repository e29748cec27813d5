// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/HostLineOut.h"

#include "host_interfaces/LineOutManagerAbstract.h"

namespace host
{
/// The host's line outputs: one.
class HostLineOutManager : public LineOutManagerAbstract
{
    Q_OBJECT

public:
    using LineOutManagerAbstract::LineOutManagerAbstract;

    /// Null for any index but 0.
    std::shared_ptr<LineOutAbstract> lineOut(int index) override
    {
        return index == 0 ? m_output : nullptr;
    }

    HostLineOut &output() { return *m_output; }

    void reserved1() override { }
    void reserved2() override { }

private:
    std::shared_ptr<HostLineOut> m_output = std::make_shared<HostLineOut>();
};
} // namespace host
