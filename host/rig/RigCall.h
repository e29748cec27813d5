// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rig/RigTarget.h"

#include <QByteArrayList>

namespace host
{
/// One command on its way: what it was given, what it acts on, and what it answers.
struct RigCall
{
    RigTarget &target;
    VfoId vfo;                ///< the active one, or the one that was asked for
    QByteArrayList arguments; ///< as many as the command has

    QByteArrayList answers = {};
    bool isOver = false; ///< the client takes its leave

    const QByteArray &argument(int i) const { return arguments[i]; }
    void answer(const QByteArray &value) { answers.append(value); }
};
} // namespace host
