// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/HostOutlet.h"

#include "host_interfaces/VacAbstract.h"

namespace host
{
/// The virtual audio cable, which tells the device its rate.
class HostVac : public HostOutlet<VacAbstract>
{
public:
    using HostOutlet::HostOutlet;

    AudioParams audioParams() override { return {sampleRateHz()}; }

    void reserved2() override { }
    void reserved3() override { }
    void reserved4() override { }
};
} // namespace host
