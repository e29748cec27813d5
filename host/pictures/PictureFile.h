// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>

namespace host
{
/// False, with `error` (may be null) naming the file and the reason in one line.
bool refusePicture(const QString &path, const QString &reason, QString *error);

/// Writes a PNG whole or not at all: an older file of that name stays until the new one is
/// complete. On failure as refusePicture().
bool savePng(const QImage &image, const QString &path, QString *error);
} // namespace host
