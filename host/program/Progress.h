// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace host
{
/// One line on stderr that is written over and over while the listener runs. Silent where stderr is
/// no terminal.
class Progress
{
public:
    Progress();
    ~Progress();

    void show(const QString &text);
    void clear();

private:
    bool m_isTerminal;
    bool m_shown = false;
};
} // namespace host
