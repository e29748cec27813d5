// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/PictureFile.h"

#include "support/FileSizeLimit.h"

#include <QTemporaryDir>
#include <csignal>
#include <gtest/gtest.h>

namespace
{
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
} // namespace
