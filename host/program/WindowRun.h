// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/HostSettings.h"

#include <QStringList>

namespace host
{
/// One run with a window: from the command line until the window is closed. Main thread.
class WindowRun
{
public:
    /// Whether there is a screen to show it on.
    static bool isPossible();

    /// Before the application is made: the size of everything that was chosen in the window, for a
    /// desktop that does not say.
    static void prepareScale(const QStringList &arguments);

    /// Exit status of the program.
    static int run(const HostSettings &settings);
};
} // namespace host
