// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/DiskRefusal.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host
{
namespace
{
constexpr std::size_t kProbeBytes = 1 << 17; // more than is left in a block of any disk

QString lastReason()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// True if all of it was taken; else errno tells.
bool isProbeTaken(int file)
{
    static const std::array<char, kProbeBytes> kZeros{};
    for (std::size_t at = 0; at < kZeros.size();) {
        const ssize_t taken = write(file, kZeros.data() + at, kZeros.size() - at);
        if (taken < 0)
            return false;
        at += std::size_t(taken);
    }
    return true;
}
} // namespace

QString diskRefusal(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat before
    { };
    const bool isThere = stat(name.constData(), &before) == 0;
    const int file =
        open(name.constData(), O_WRONLY | O_APPEND | O_CLOEXEC | (isThere ? 0 : O_CREAT), 0666);
    if (file < 0)
        return lastReason();
    QString reason = QCoreApplication::translate("host::DiskRefusal", "the file was taken away");
    if (!isThere)
        unlink(name.constData());
    else if (!isProbeTaken(file))
        reason = lastReason();
    else
        reason =
            QCoreApplication::translate("host::DiskRefusal", "the disk did not take all of it");
    if (isThere && ftruncate(file, before.st_size) != 0)
        reason = lastReason();
    close(file);
    return reason;
}

QString diskRefusalBeside(const QString &path)
{
    QTemporaryFile probe(QFileInfo(path).path() + "/.velmora-XXXXXX");
    if (!probe.open())
        return probe.errorString();
    return isProbeTaken(probe.handle()) ? QString() : lastReason();
}
} // namespace host
