// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/PictureFile.h"

#include "support/FileSizeLimit.h"

#include <QFile>
#include <QTemporaryDir>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
TEST(PictureFileTest, AnUnwritablePathIsTold)
{
    const QTemporaryDir directory;
    for (const QString &path : {directory.filePath("no/such/place.png"), directory.path()}) {
        QString error;
        EXPECT_FALSE(host::savePng(QImage(8, 8, QImage::Format_RGB32), path, &error));
        EXPECT_TRUE(error.startsWith(path + ": ")) << error.toStdString();
        EXPECT_GT(error.size(), path.size() + 2) << error.toStdString();
    }
}

TEST(PictureFileTest, AFullDiskLeavesTheOlderPicture)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("a.png");
    QString error;
    ASSERT_TRUE(host::savePng(QImage(8, 8, QImage::Format_RGB32), path, &error));
    std::signal(SIGXFSZ, SIG_IGN);
    const test::FileSizeLimit limit(50);
    EXPECT_FALSE(host::savePng(QImage(300, 8, QImage::Format_RGB32), path, &error));
    EXPECT_TRUE(error.startsWith(path + ": ")) << error.toStdString();
    EXPECT_EQ(QImage(path).size(), QSize(8, 8));
}

TEST(PictureFileTest, APipeIsWrittenToAndStays)
{
    const QTemporaryDir directory;
    const QByteArray path = QFile::encodeName(directory.filePath("pipe"));
    ASSERT_EQ(mkfifo(path.constData(), 0600), 0);
    const int reader = open(path.constData(), O_RDWR); // both ends, so that nobody waits
    QString error;
    EXPECT_TRUE(host::savePng(QImage(8, 8, QImage::Format_RGB32), path, &error));
    QByteArray bytes(4, '\0');
    EXPECT_EQ(fcntl(reader, F_SETFL, O_NONBLOCK), 0);
    EXPECT_EQ(read(reader, bytes.data(), 4), 4);
    EXPECT_TRUE(bytes.endsWith("PNG")) << error.toStdString();
    struct stat status
    { };
    EXPECT_EQ(stat(path.constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
    close(reader);
}
} // namespace
