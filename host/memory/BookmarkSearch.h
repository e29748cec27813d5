// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSortFilterProxyModel>
#include <QStringList>

namespace host
{
/// Shows those bookmarks of a BookmarkModel in which all words of a text are found, each in any of
/// the columns and in any case, and sorts them by any column.
class BookmarkSearch : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /// Takes the model over as its source; it must outlive the search.
    explicit BookmarkSearch(QAbstractItemModel &bookmarks);

    /// Words between blanks; none shows everything.
    void setText(const QString &text);

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    QStringList m_words;
};
} // namespace host
