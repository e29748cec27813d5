// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/Terminal.h"

#include <cstdio>
#include <unistd.h>

namespace host
{
namespace
{
constexpr char kToLineStartAndErase[] = "\r\033[K";
} // namespace

Terminal::Terminal() : m_isTerminal(isatty(STDERR_FILENO) == 1) { }

Terminal::~Terminal()
{
    clearProgress();
}

void Terminal::print(const QString &text)
{
    if (text.isEmpty() || m_printed.contains(text))
        return;
    m_printed.insert(text);
    clearProgress();
    std::fputs(("velmora-host: " + text + '\n').toLocal8Bit().constData(), stderr);
}

void Terminal::showProgress(const QString &text)
{
    if (!m_isTerminal)
        return;
    std::fputs((kToLineStartAndErase + text).toLocal8Bit().constData(), stderr);
    std::fflush(stderr);
    m_isProgressShown = true;
}

void Terminal::clearProgress()
{
    if (m_isProgressShown)
        std::fputs(kToLineStartAndErase, stderr);
    m_isProgressShown = false;
}
} // namespace host
