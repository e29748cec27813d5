// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/LogCapture.h"

#include <QMessageLogContext>
#include <mutex>

namespace test
{
namespace
{
std::mutex mutex;
QStringList all;
QStringList onlyWarnings;
QtMessageHandler previous = nullptr;

void keep(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    const std::lock_guard lock(mutex);
    all << text;
    if (type == QtWarningMsg)
        onlyWarnings << text;
}
} // namespace

LogCapture::LogCapture()
{
    clear();
    previous = qInstallMessageHandler(keep);
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(previous);
}

QStringList LogCapture::lines() const
{
    const std::lock_guard lock(mutex);
    return all;
}

QStringList LogCapture::warnings() const
{
    const std::lock_guard lock(mutex);
    return onlyWarnings;
}

bool LogCapture::warned(const QString &text) const
{
    const QStringList lines = warnings();
    return std::any_of(
        lines.begin(), lines.end(), [&](const QString &line) { return line.contains(text); });
}

void LogCapture::clear()
{
    const std::lock_guard lock(mutex);
    all.clear();
    onlyWarnings.clear();
}
} // namespace test
