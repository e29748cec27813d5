// SPDX-License-Identifier: GPL-3.0-or-later
#include "memory/BookmarkCsv.h"

#include <gtest/gtest.h>

namespace
{
using host::Bookmark;
using host::Mode;

const QVector<Bookmark> kAwkward = {
    {"a, \"b\"\r\nc", {14.074e6, Mode::USB, 300.0, 2700.0}, "\"\""},
    {QString::fromUtf8("Zürich 東京 🎙"), {77500.5, Mode::CW, -250.0, 250.0}, " blank "},
    {"", {0.0, Mode::WFM, -90000.0, 90000.0}, ";\t"},
};

TEST(BookmarkCsvTest, WhatIsWrittenIsReadBack)
{
    const QByteArray text = host::bookmarkcsv::write(kAwkward);
    for (const QByteArray &bytes : {text, "\xef\xbb\xbf" + text}) {
        const auto result = host::bookmarkcsv::read(bytes);
        EXPECT_TRUE(result.error.isEmpty() && result.problems.isEmpty());
        EXPECT_EQ(result.bookmarks, kAwkward);
    }
}

TEST(BookmarkCsvTest, TakesWhatOtherProgramsWrite)
{
    const Bookmark plain{"n", {7.1e6, Mode::LSB, -2700.0, -300.0}, ""};
    const QByteArray texts[] = {
        "name,frequency,mode\nn,7100000,LSB\n",
        "name,frequency,mode\nn,7100000,LSB",
        "name;frequency;mode\r\nn;7.1M;lsb\r\n",
        "mode\tFrequency\tcolour\t Name \rLSB\t7.1e6\tred\tn\r",
        "frequency,name,mode,filter\n\n\n\"7100000\",\"n\",LSB,-2700:-300\n\n",
        "name,frequency,mode,filter,note\nn,7100k,LSB,,\n",
        "name,frequency,mode,filter,note\nn,7100k,LSB\n",
    };
    for (const QByteArray &text : texts) {
        const auto result = host::bookmarkcsv::read(text);
        EXPECT_EQ(result.bookmarks, QVector<Bookmark>{plain}) << text.toStdString();
    }
}

TEST(BookmarkCsvTest, BadRecordsAreNamedByTheirLineAndLeftOut)
{
    const auto result = host::bookmarkcsv::read("name,frequency,mode,filter,note\n"
                                                "good,1,USB,300:2700,\n"
                                                "no frequency,,USB,,\n"    // 3
                                                "\"two\nlines\",x,USB,,\n" // 4
                                                "negative,-1,USB,,\n"      // 6
                                                "endless,inf,USB,,\n"
                                                "mode,1,XYZ,,\n"
                                                "filter,1,USB,300,\n"
                                                "falls,1,USB,300:300,\n"
                                                "long,1,USB,,,,\n"
                                                "good too,2,AM,,\n"
                                                "open,1,USB,,\"no end\n" // 13
                                                "swallowed,1,USB,,\n");
    ASSERT_EQ(result.bookmarks.size(), 2);
    EXPECT_EQ(result.bookmarks[1].name, "good too");
    QStringList lines;
    for (const QString &problem : result.problems)
        lines += problem.section(':', 0, 0);
    EXPECT_EQ(lines.join(','), "line 3,line 4,line 6,line 7,line 8,line 9,line 10,line 11,line 13");
}

TEST(BookmarkCsvTest, WhatIsNoTableIsRefused)
{
    const QByteArray texts[] = {"", "\n", "14074000\n", "name,mode\nn,USB\n",
        QByteArray("frequency\n\0\n", 12), "frequency\n\xff\xfe\n",
        "\xff\xfe"
        "f\0r\0",
        "frequency,name\n1,\xc3"};
    for (const QByteArray &text : texts) {
        const auto result = host::bookmarkcsv::read(text);
        EXPECT_FALSE(result.error.isEmpty()) << text.toPercentEncoding().toStdString();
        EXPECT_TRUE(result.bookmarks.isEmpty());
    }
}
} // namespace
