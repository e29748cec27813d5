// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/HostVac.h"

#include "host_interfaces/VacManagerAbstract.h"

namespace host
{
/// The host's virtual audio cables: one.
class HostVacManager : public VacManagerAbstract
{
    Q_OBJECT

public:
    using VacManagerAbstract::VacManagerAbstract;

    /// Null for any index but 0.
    std::shared_ptr<VacAbstract> vac(int index) override { return index == 0 ? m_output : nullptr; }

    HostVac &output() { return *m_output; }

    void reserved1() override { }
    void reserved2() override { }

private:
    std::shared_ptr<HostVac> m_output = std::make_shared<HostVac>();
};
} // namespace host
