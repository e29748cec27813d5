// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rig/RigCall.h"

#include <QByteArray>

#include <vector>

namespace host
{
/// One command of rig control: a row of table(), from which follow its reading, its answer in both
/// forms, and its line of the help.
struct RigCommand
{
    char letter;      ///< 0: has only the long name
    const char *name; ///< after a backslash
    std::vector<const char *> arguments;

    /// What its answers are called in the extended form; empty: it sets something and reports how
    /// that went. An empty name stands for text that is passed on as it is.
    std::vector<const char *> answers;
    RigError (*run)(RigCall &);

    bool byVfo = false; ///< a VFO may stand in front of its arguments

    /// What "?" for the first argument lists; null: nothing.
    QByteArray (*choices)() = nullptr;

    static const std::vector<RigCommand> &table();

    // Null for an unknown one.
    static const RigCommand *find(char letter);
    static const RigCommand *find(const QByteArray &name);
};
} // namespace host
