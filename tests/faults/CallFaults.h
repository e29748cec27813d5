// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

/// How a run of the headless host ends.
enum class Ending {
    Fine,      ///< as if nothing had been, if later
    Missing,   ///< no receiver found
    Either,    ///< one of both: the call takes as long as the host searches
    Unopened,  ///< the receiver cannot be opened
    Unstarted, ///< the receiver does not start its stream
    Lost,      ///< the receiver was lost
    Silent,    ///< the receiver is silent
};

/// One way in which the call number so many of a function goes wrong, and what is to come of it.
struct CallFault
{
    QString text; ///< in the language of the virtual receiver
    QString function;
    unsigned call = 0;   ///< the first that it strikes
    const char *warning; ///< what the plugin says, null for nothing
    Ending ending;
    bool keepsHandle; ///< what was opened stays so, and nobody can open it again
    bool hangs;
};

/// All functions, kinds and places. Without `whole` each function in one way at one place, each
/// kind among them.
std::vector<CallFault> callFaults(bool whole);

/// Whether the whole tables are asked for: ZEPHRIN_ALL_FAULTS in the environment.
bool isWholeTableWanted();
