// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureFile.h"

#include "vm_library/source/file/WholeFile.h"

#include <QBuffer>
#include <QImageWriter>

namespace host
{
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

    QString reason;
    if (vm::file::writeWhole(path, png.data(), &reason))
        return true;
    if (error)
        *error = reason;
    return false;
}
} // namespace host
