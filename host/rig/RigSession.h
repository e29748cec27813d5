// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rig/RigCommand.h"

#include <QByteArray>

namespace host
{
/// One client's talk in the protocol of hamlib's rigctld: a line in, its answer out. What the
/// client has chosen for itself lasts as long as the session.
///
/// A line holds one command or several: a letter, or a backslash and a long name, and arguments
/// between blanks. A VFO may stand in front of the arguments, as clients put it there that were
/// told to. In front of a command "+" asks for the extended form of the answer, with the names of
/// all values; ";", "|" and "," ask for the same with that sign in place of line breaks.
class RigSession
{
public:
    /// target must outlive the session.
    explicit RigSession(RigTarget &target) : m_target(target) { }

    /// line is without its end. Empty where there is nothing to answer.
    QByteArray answer(const QByteArray &line);

    /// The client has taken its leave.
    bool isOver() const { return m_isOver; }

private:
    class Words;

    QByteArray execute(Words &words);
    QByteArray run(const RigCommand &command, Words &words, char separator);

    RigTarget &m_target;
    bool m_isOver = false;
};
} // namespace host
