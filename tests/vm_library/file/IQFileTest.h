// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/file/IQFile.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// A recorder in an empty folder, with what the file thread uses made callable.
class IQFileTest : public testing::Test
{
protected:
    using IQFile = vm::file::IQFile;
    using Packed = std::vector<unsigned char>;

    class OpenIQFile : public IQFile
    {
    public:
        using IQFile::fillWaveHeader;
        using IQFile::scale;
    };

    QString path(const char *name = "a.wav") const { return m_folder.path() + "/" + name; }

    static QByteArray content(const QString &path)
    {
        QFile in(path);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }

    static QByteArray text(const Packed &bytes)
    {
        return QByteArray(reinterpret_cast<const char *>(bytes.data()), int(bytes.size()));
    }

    /// Records one block and returns the file.
    QByteArray recorded(IQFile::Format format, std::vector<COMPLEX> block)
    {
        file.setFormat(format);
        EXPECT_TRUE(file.open(path()));
        EXPECT_TRUE(file.write(block));
        file.close();
        return content(path());
    }

    OpenIQFile file;

private:
    QTemporaryDir m_folder;
};
