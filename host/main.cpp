// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine.h"
#include "HostLog.h"
#include "Listener.h"

#include <QCoreApplication>

#include <cstdio>

namespace
{
void print(std::FILE *where, const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), where);
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName("velmora-host");
    QCoreApplication::setApplicationVersion(HOST_VERSION);

    const auto command = host::readCommandLine(QCoreApplication::arguments());
    if (const auto *information = std::get_if<host::Information>(&command)) {
        print(stdout, information->text);
        return 0;
    }
    if (const auto *error = std::get_if<host::UsageError>(&command)) {
        print(stderr, "velmora-host: " + error->text + '\n');
        return host::kUsageError;
    }
    const host::HostLog log;
    return host::Listener(std::get<host::HostSettings>(command)).run();
}
