// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/PictureFile.h"

#include "pictures/WaterfallPicture.h"
#include "support/FileSizeLimit.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
TEST(PictureFileTest, AWaterfallComesBackInItsColours)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("waterfall.png");
    host::WaterfallPicture picture({7.1e6, 192e3}, {640, 400});
    picture.setRange({-120.0, -20.0});
    std::vector<float> line(640);
    for (std::size_t i = 0; i < line.size(); ++i)
        line[i] = float(-120.0 + 100.0 * double(i) / 640.0);
    picture.addLine(0.0, line);
    QString error;
    ASSERT_TRUE(picture.save(path, &error)) << error.toStdString();
    EXPECT_EQ(error, QString());
    const QImage drawn = picture.image();
    const QImage read = QImage(path).convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(read.size(), QSize(640, 400));
    const QRect plot = picture.plotArea();
    EXPECT_EQ(read.copy(plot), drawn.copy(plot));
}

TEST(PictureFileTest, AnUnwritablePathIsTold)
{
    const QTemporaryDir directory;
    const QString missing = directory.filePath("no/such/place.png");
    for (const QString &path : {missing, directory.path()}) {
        QString error;
        EXPECT_FALSE(host::savePng(QImage(8, 8, QImage::Format_RGB32), path, &error));
        EXPECT_TRUE(error.startsWith(path + ": ")) << error.toStdString();
        EXPECT_GT(error.size(), path.size() + 2) << error.toStdString();
        EXPECT_FALSE(host::savePng(QImage(8, 8, QImage::Format_RGB32), path, nullptr));
    }
    EXPECT_FALSE(QFileInfo::exists(missing));
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
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QString error;
    EXPECT_TRUE(host::savePng(image, path, &error)) << error.toStdString();
    QByteArray bytes(4096, '\0'); // in the pipe, which holds 64 KiB
    const auto got = fcntl(reader, F_SETFL, O_NONBLOCK) == 0
        ? read(reader, bytes.data(), std::size_t(bytes.size()))
        : -1;
    EXPECT_EQ(QImage::fromData(bytes.left(int(got)), "png").convertToFormat(image.format()), image);
    struct stat status
    { };
    EXPECT_EQ(stat(path.constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
    close(reader);
}
} // namespace
