// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "memory/Bookmark.h"

#include <QByteArray>
#include <QStringList>
#include <QVector>

namespace host
{
/// Bookmarks as a table in UTF-8, the form in which they are kept, imported and exported. The first
/// record names the columns, the keys of bookmarkFields(), which may stand in any order and of
/// which only the frequency must be there. Other columns are passed over.
namespace bookmarkcsv
{
struct Result
{
    QVector<Bookmark> bookmarks;

    /// "line 7: ..." for each record that is no bookmark and was left out.
    QStringList problems;

    /// Why the whole is no such table; empty: it is one.
    QString error;
};

/// With a byte order mark or without; separated by commas, semicolons or tabs.
Result read(const QByteArray &bytes);

QByteArray write(const QVector<Bookmark> &bookmarks);
} // namespace bookmarkcsv
} // namespace host
