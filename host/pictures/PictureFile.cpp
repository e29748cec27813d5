// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureFile.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>

namespace host
{
namespace
{
bool isWritten(QFileDevice &file, const QByteArray &bytes)
{
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}
} // namespace

bool refusePicture(const QString &path, const QString &reason, QString *error)
{
    if (error)
        *error = path + ": " + reason;
    return false;
}

bool savePng(const QImage &image, const QString &path, QString *error)
{
    QBuffer png;
    png.open(QIODevice::WriteOnly);
    QImageWriter writer(&png, "png");
    if (!writer.write(image))
        return refusePicture(path, writer.errorString(), error);

    const QFileInfo there(path);
    if (there.exists() && !there.isFile()) {
        // A pipe or a device is written to; a complete file put in its place would replace it.
        QFile file(path);
        return isWritten(file, png.data()) || refusePicture(path, file.errorString(), error);
    }
    QSaveFile file(path);
    return (isWritten(file, png.data()) && file.commit())
        || refusePicture(path, file.errorString(), error);
}
} // namespace host
