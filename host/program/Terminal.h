// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSet>
#include <QString>

namespace host
{
/// What the listener says on stderr while it runs: lines that stay, and below them one that is
/// written over and over, where stderr is a terminal. Main thread.
class Terminal
{
public:
    Terminal();
    ~Terminal();

    /// A line with the program's name in front, each text once; nothing of an empty one.
    void print(const QString &text);

    /// The line that is written over.
    void showProgress(const QString &text);
    void clearProgress();

private:
    bool m_isTerminal;
    bool m_isProgressShown = false;
    QSet<QString> m_printed;
};
} // namespace host
