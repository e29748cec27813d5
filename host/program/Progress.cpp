// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/Progress.h"

#include <cstdio>
#include <unistd.h>

namespace host
{
namespace
{
constexpr char kToLineStartAndErase[] = "\r\033[K";
} // namespace

Progress::Progress() : m_isTerminal(isatty(STDERR_FILENO) == 1) { }

Progress::~Progress()
{
    clear();
}

void Progress::show(const QString &text)
{
    if (!m_isTerminal)
        return;
    std::fputs((kToLineStartAndErase + text).toLocal8Bit().constData(), stderr);
    std::fflush(stderr);
    m_shown = true;
}

void Progress::clear()
{
    if (m_shown)
        std::fputs(kToLineStartAndErase, stderr);
    m_shown = false;
}
} // namespace host
