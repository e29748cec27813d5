// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/file/WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>

namespace vm::file
{
namespace
{
// A full disk shows when the bytes are flushed, which neither commit() nor close() looks at.
bool isWritten(QFileDevice &file, const QByteArray &bytes)
{
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}
} // namespace

QString reasonOf(const QFileDevice &file)
{
    const int reason = errno;
    const QString text = file.errorString();
    const bool isKept = text != QFile().errorString();
    return isKept || reason == 0 ? text : QString::fromLocal8Bit(std::strerror(reason));
}

bool writeWhole(const QString &path, const QByteArray &bytes, QString *error)
{
    const auto fail = [&](const QFileDevice &file) {
        *error = path + ": " + reasonOf(file);
        return false;
    };
    const QFileInfo there(path);
    if (there.exists() && !there.isFile() && !there.isDir()) {
        QFile file(path);
        return isWritten(file, bytes) || fail(file);
    }
    QSaveFile file(path);
    return (isWritten(file, bytes) && file.commit()) || fail(file);
}
} // namespace vm::file
