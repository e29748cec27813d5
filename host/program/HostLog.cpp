// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/HostLog.h"

#include <QLoggingCategory>
#include <QString>

#include <algorithm>
#include <cstdio>
#include <map>
#include <mutex>

namespace host
{
namespace
{
// Qt's own on a user without a session and on a window without a screen; that of a low pass with
// fewer taps than the shortest window has.
constexpr const char *kRemarks[] = {"QStandardPaths: XDG_RUNTIME_DIR not set",
    "This plugin does not support propagateSizeHints", "mLenght != lenght"};

// What the driver says of each call that a receiver does not answer.
constexpr const char *kUnanswered[] = {"failed to read IQ", "failed to write data"};

template <std::size_t kSize>
bool isAnyOf(const QString &line, const char *const (&texts)[kSize])
{
    return std::ranges::any_of(
        texts, [&line](const char *text) { return line.contains(QLatin1String(text)); });
}

std::mutex g_mutex;

// Guarded by g_mutex.
std::map<QString, std::uint64_t> g_lines; // by text, how often
bool g_isVerbose = false;
bool g_isReceiverLost = false;

void print(const QString &text)
{
    std::fputs(("velmora-host: " + text + '\n').toLocal8Bit().constData(), stderr);
}

void onMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtDebugMsg)
        return;
    const QString line = text.simplified();
    const std::lock_guard lock(g_mutex);
    const bool isLate = !g_isVerbose && isAnyOf(line, kUnanswered);
    if ((!g_isVerbose && isAnyOf(line, kRemarks)) || (isLate && g_isReceiverLost))
        return;
    if (++g_lines[line] == 1 && !isLate)
        print(line);
}
} // namespace

HostLog::HostLog()
{
    // Dropped by Qt already, before they get here.
    QLoggingCategory::setFilterRules("default.debug=false");
    qInstallMessageHandler(onMessage);
}

HostLog::~HostLog()
{
    qInstallMessageHandler(nullptr);
    const std::lock_guard lock(g_mutex);
    for (const auto &[line, count] : g_lines)
        if (count > 1)
            print(QString("%1 times: %2").arg(count).arg(line));
        else if (!g_isVerbose && isAnyOf(line, kUnanswered))
            print(line);
    g_lines.clear();
    g_isVerbose = g_isReceiverLost = false;
}

void HostLog::setVerbose(bool isVerbose)
{
    const std::lock_guard lock(g_mutex);
    g_isVerbose = isVerbose;
}

void HostLog::tellOfLostReceiver()
{
    const std::lock_guard lock(g_mutex);
    g_isReceiverLost = true;
    if (!g_isVerbose)
        std::erase_if(g_lines, [](const auto &line) { return isAnyOf(line.first, kUnanswered); });
}
} // namespace host
