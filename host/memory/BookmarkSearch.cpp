// SPDX-License-Identifier: GPL-3.0-or-later
#include "memory/BookmarkSearch.h"

#include "memory/BookmarkModel.h"

#include <algorithm>

namespace host
{
BookmarkSearch::BookmarkSearch(QAbstractItemModel &bookmarks)
{
    setSourceModel(&bookmarks);
    setSortRole(BookmarkModel::kSortRole);
    setSortCaseSensitivity(Qt::CaseInsensitive);
    setSortLocaleAware(true);
}

void BookmarkSearch::setText(const QString &text)
{
    m_words = text.split(' ', Qt::SkipEmptyParts);
    invalidateFilter();
}

bool BookmarkSearch::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    QStringList columns;
    for (int column = 0; column < sourceModel()->columnCount(parent); ++column)
        columns += sourceModel()->index(row, column, parent).data().toString();
    const QString all = columns.join('\n');
    return std::all_of(m_words.begin(), m_words.end(),
        [&all](const QString &word) { return all.contains(word, Qt::CaseInsensitive); });
}
} // namespace host
