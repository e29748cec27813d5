// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/HostLog.h"

#include <QLoggingCategory>
#include <QString>
#include <cstdio>
#include <map>
#include <mutex>

namespace host
{
namespace
{
// Qt's own remarks on a user without a session and on a window without a screen.
constexpr QLatin1String kOfNoUse[] = {QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set"),
    QLatin1String("This plugin does not support propagateSizeHints")};

std::mutex g_mutex;
std::map<QString, std::uint64_t> g_lines; // by text, how often; guarded by g_mutex

void print(const QString &text)
{
    std::fputs(("velmora-host: " + text + '\n').toLocal8Bit().constData(), stderr);
}

void onMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtDebugMsg)
        return;
    for (const QLatin1String &remark : kOfNoUse)
        if (text.startsWith(remark))
            return;
    const QString line = text.simplified();
    const std::lock_guard lock(g_mutex);
    if (++g_lines[line] == 1)
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
    g_lines.clear();
}
} // namespace host
