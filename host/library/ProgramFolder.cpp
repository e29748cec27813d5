// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/ProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace host
{
std::optional<QString> findBesideProgram(const QStringList &files)
{
    const QDir folder(QCoreApplication::applicationDirPath());
    for (const QString &file : files)
        if (const QFileInfo found(folder, file); found.isFile())
            return found.canonicalFilePath();
    return std::nullopt;
}
} // namespace host
