// SPDX-License-Identifier: GPL-3.0-or-later
#include "memory/BookmarkFile.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace
{
using host::BookmarkFile;
using host::BookmarkModel;

class BookmarkFileTest : public testing::Test
{
protected:
    void write(const QByteArray &bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QByteArray content(const QString &name) const
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    QString path = folder.filePath("new/b.csv");
    BookmarkModel model;
};

TEST_F(BookmarkFileTest, AChangeIsOnTheDiskSoonAndAtTheEnd)
{
    auto file = std::make_unique<BookmarkFile>(model, path);
    file->load();
    EXPECT_TRUE(file->notices().isEmpty());
    EXPECT_EQ(model.bookmarks().size(), BookmarkFile::standard().size());
    EXPECT_FALSE(QFile::exists(path)) << "nothing has changed yet";
    model.removeRows(0, 1);
    QTest::qWait(BookmarkFile::kSaveMs / 2);
    model.removeRows(0, 1); // does not put it off
    EXPECT_TRUE(QTest::qWaitFor([&] { return file->isSaved(); }, BookmarkFile::kSaveMs));
    const QByteArray saved = content(path);
    model.removeRows(0, model.rowCount());
    file.reset();
    EXPECT_LT(content(path).size(), saved.size());
    BookmarkFile again(model, path);
    model.setBookmarks(BookmarkFile::standard());
    again.load();
    EXPECT_EQ(model.rowCount(), 0) << "no bookmarks are bookmarks, too";
}

TEST_F(BookmarkFileTest, AnUnreadableFileIsSetAsideAndNamed)
{
    QDir().mkpath(folder.filePath("new"));
    for (const QString &name : {path + ".damaged", path + ".damaged-2"}) {
        write("\xff\xfe rubbish");
        BookmarkFile file(model, path);
        file.load();
        ASSERT_EQ(file.notices().size(), 1);
        EXPECT_TRUE(file.notices().first().contains(name));
        EXPECT_EQ(content(name), "\xff\xfe rubbish");
        EXPECT_FALSE(QFile::exists(path));
        EXPECT_EQ(model.bookmarks().size(), BookmarkFile::standard().size());
    }
}

TEST_F(BookmarkFileTest, OfAFileWithBadLinesTheGoodOnesAreUsed)
{
    QDir().mkpath(folder.filePath("new"));
    const QByteArray text = "frequency,name\n1M,good\nx,bad\n";
    write(text);
    BookmarkFile file(model, path);
    file.load();
    EXPECT_TRUE(file.notices().first().contains("line 3"));
    ASSERT_EQ(model.rowCount(), 1);
    model.removeRows(0, 1);
    EXPECT_TRUE(file.save());
    EXPECT_EQ(content(path + ".damaged"), text);
}

TEST_F(BookmarkFileTest, WhatCannotBeSavedIsToldOnceAndTriedAgain)
{
    QFile blocker(folder.filePath("new")); // where the folder should be
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    BookmarkFile file(model, path);
    QSignalSpy problems(&file, &BookmarkFile::problem);
    file.load();
    model.removeRows(0, 1);
    EXPECT_FALSE(file.save());
    EXPECT_FALSE(file.save());
    EXPECT_EQ(problems.size(), 1);
    EXPECT_TRUE(problems.first().first().toString().contains(path));
    ASSERT_TRUE(blocker.remove());
    EXPECT_TRUE(file.save());
    EXPECT_TRUE(file.isSaved());
}
} // namespace
