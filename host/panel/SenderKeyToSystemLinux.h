// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "panel/SenderKeyToSystem.h"

#include <QCoreApplication>

namespace host
{
/// By the XTEST extension of the X server that DISPLAY names. A desktop on Wayland passes the keys
/// to those of its programs that run on its X server. Each keystroke has a connection of its own,
/// so that a server that goes away takes nothing along.
class SenderKeyToSystemLinux : public SenderKeyToSystem
{
    Q_DECLARE_TR_FUNCTIONS(SenderKeyToSystem)

public:
    bool send(const QString &keys) override;
};
} // namespace host
