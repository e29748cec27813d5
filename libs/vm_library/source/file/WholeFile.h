// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFileDevice>
#include <QString>

namespace vm::file
{
/// Why the last operation of a file failed. Qt does not keep the system's reason if a part of a
/// write was taken; then it is still in errno, so nothing may come in between.
QString reasonOf(const QFileDevice &file);

/// Puts a file in the place of what is there under that name, once all of it has reached the disk;
/// until then, and if anything fails, what was there stays. A link stays a link. What is no file (a
/// pipe, a device) is written to.
///
/// False with "PATH: reason" in error. Any thread.
bool writeWhole(const QString &path, const QByteArray &bytes, QString *error);
} // namespace vm::file
