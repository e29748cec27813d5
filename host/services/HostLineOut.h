// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/HostOutlet.h"

#include "host_interfaces/LineOutAbstract.h"

namespace host
{
/// The line output.
class HostLineOut : public HostOutlet<LineOutAbstract>
{
public:
    using HostOutlet::HostOutlet;

    void reserved2() override { }
    void reserved3() override { }
    void reserved4() override { }
    void reserved5() override { }
    void reserved6() override { }
    void reserved7() override { }
    void reserved8() override { }
    void reserved9() override { }
    void reserved10() override { }
    void reserved11() override { }
};
} // namespace host
