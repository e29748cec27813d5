// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host_interfaces/Common.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace test
{
/// Sends the settings files to an empty folder as long as it lives, then deletes them.
class TemporarySettings
{
public:
    TemporarySettings() { qputenv(kVariable, m_folder.path().toLocal8Bit()); }
    ~TemporarySettings()
    {
        if (m_before.isNull())
            qunsetenv(kVariable);
        else
            qputenv(kVariable, m_before);
    }
    TemporarySettings(const TemporarySettings &) = delete;
    TemporarySettings &operator=(const TemporarySettings &) = delete;

    static QString path(const char *file) { return Common::settingsPath() + "/" + file; }

    static void write(const char *file, const QByteArray &text)
    {
        QDir().mkpath(Common::settingsPath());
        QFile out(path(file));
        if (out.open(QIODevice::WriteOnly))
            out.write(text);
    }

    static QByteArray read(const char *file)
    {
        QFile in(path(file));
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }

private:
    static constexpr const char *kVariable = "XDG_CONFIG_HOME";
    QByteArray m_before = qgetenv(kVariable);
    QTemporaryDir m_folder;
};
} // namespace test
