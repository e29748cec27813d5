// SPDX-License-Identifier: GPL-3.0-or-later
#include "memory/BookmarkModel.h"
#include "memory/BookmarkField.h"
#include "memory/BookmarkSearch.h"

#include <QAbstractItemModelTester>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{
using host::Bookmark;
using host::Mode;

Bookmark at(double hertz, const QString &name = {})
{
    return {name, {hertz, Mode::USB, 300.0, 2700.0}, {}};
}

class BookmarkModelTest : public testing::Test
{
protected:
    bool set(int row, int column, const QString &text)
    {
        return model.setData(model.index(row, column), text);
    }

    QString names() const
    {
        QString all;
        for (const Bookmark &bookmark : model.bookmarks())
            all += bookmark.name;
        return all;
    }

    host::BookmarkModel model;
    // Fails the test program where the model breaks the rules of Qt's models.
    QAbstractItemModelTester rules{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(BookmarkModelTest, KeepsTheOrderOfFrequencies)
{
    model.setBookmarks({at(3e6, "c"), at(1e6, "a"), at(2e6, "b")});
    EXPECT_EQ(model.add(at(2e6, "B")), 2);
    EXPECT_EQ(names(), "abBc");
    EXPECT_TRUE(set(0, 1, "2.5M"));
    EXPECT_EQ(names(), "bBac");
    EXPECT_TRUE(set(3, 1, "0"));
    EXPECT_EQ(names(), "cbBa");
    EXPECT_TRUE(set(1, 1, "2000000"));
    EXPECT_EQ(names(), "cbBa");
    EXPECT_TRUE(model.removeRows(1, 2));
    EXPECT_FALSE(model.removeRows(1, 2));
    EXPECT_EQ(names(), "ca");
}

TEST_F(BookmarkModelTest, FindsThoseOfAPartOfTheSpectrum)
{
    model.setBookmarks({at(1e6), at(2e6), at(2e6), at(3e6)});
    const std::tuple<double, double, std::size_t> cases[] = {{0.0, 9e6, 4}, {1e6, 2e6, 3},
        {1.1e6, 1.9e6, 0}, {2e6, 2e6, 2}, {3.1e6, 9e6, 0}, {0.0, 0.9e6, 0}, {2e6, 1e6, 0}};
    for (const auto &[low, high, count] : cases)
        EXPECT_EQ(model.between(low, high).size(), count) << low << " to " << high;
    EXPECT_EQ(&model.between(1.5e6, 9e6).front(), &model.at(1));
}

TEST_F(BookmarkModelTest, TakesWhatAPersonTypes)
{
    model.setBookmarks({at(1e6, "a")});
    EXPECT_TRUE(set(0, 2, "cw"));
    EXPECT_EQ(model.at(0).reception, (host::Reception{1e6, Mode::CW, -250.0, 250.0}));
    EXPECT_TRUE(set(0, 3, " -100 : 100 "));
    EXPECT_TRUE(set(0, 2, "CW"));
    EXPECT_EQ(model.at(0).reception.filterLowHz, -100.0) << "the same mode changes nothing";
    const Bookmark before = model.at(0);
    for (const auto &[column, text] :
        {std::pair(1, "x"), {1, ""}, {2, "x"}, {3, "100"}, {3, "2:1"}})
        EXPECT_FALSE(set(0, column, text)) << text;
    EXPECT_EQ(model.at(0), before);
    for (std::size_t column = 0; column < host::bookmarkFields().size(); ++column)
        EXPECT_TRUE(set(0, int(column), model.index(0, int(column)).data(Qt::EditRole).toString()));
    EXPECT_EQ(model.at(0), before);
}

TEST_F(BookmarkModelTest, SearchFindsWordsInAnyColumn)
{
    Bookmark noted = at(14.074e6, "Data");
    noted.note = "by Day";
    model.setBookmarks({at(1e6, "b"), noted, at(9e6, "a")});
    host::BookmarkSearch search(model);
    const std::pair<const char *, int> cases[] = {
        {"", 3}, {"data", 1}, {"14.07 day", 1}, {"usb", 3}, {"data night", 0}, {"  mhz  a ", 2}};
    for (const auto &[text, rows] : cases) {
        search.setText(text);
        EXPECT_EQ(search.rowCount(), rows) << text;
    }
    search.setText("");
    search.sort(1, Qt::DescendingOrder);
    EXPECT_EQ(search.index(0, 0).data(), "Data") << "by number, not by text";
}

TEST_F(BookmarkModelTest, AnImportAddsOrChangesNothing)
{
    QTemporaryDir folder;
    const QString file = folder.filePath("b.csv");
    model.setBookmarks({at(1e6, "a"), at(2e6, "b")});
    ASSERT_TRUE(model.exportFile(file)) << model.error().toStdString();
    QFile more(file);
    ASSERT_TRUE(more.open(QIODevice::Append));
    more.write("c,3M,USB,300:2700,\r\nbad,x,,,\r\n");
    more.close();
    host::BookmarkModel::Import import;
    ASSERT_TRUE(model.importFile(file, &import));
    EXPECT_EQ(import.added, 1);
    EXPECT_EQ(import.known, 2);
    ASSERT_EQ(import.problems.size(), 1);
    EXPECT_TRUE(import.problems.first().startsWith("line 5:"));
    EXPECT_EQ(names(), "abc");
    ASSERT_TRUE(more.open(QIODevice::WriteOnly));
    more.write("RIFF");
    more.close();
    for (const QString &bad : {file, folder.filePath("none.csv"), folder.path()}) {
        EXPECT_FALSE(model.importFile(bad, &import));
        EXPECT_TRUE(model.error().startsWith(bad)) << model.error().toStdString();
    }
    EXPECT_EQ(names(), "abc");
    EXPECT_FALSE(model.exportFile(folder.filePath("no/folder.csv")));
}
} // namespace
