// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "memory/Bookmark.h"

#include <QAbstractTableModel>
#include <QStringList>
#include <QVector>

#include <span>

namespace host
{
/// The bookmarks as a table: bookmarkFields() are its columns, the order is that of the
/// frequencies, which is what between() finds them by; every cell can be edited.
///
/// A window shows it through a BookmarkSearch in a table with a field for the search, buttons to
/// add and remove, and import and export in a menu; the axis of a panorama asks between(). GUI
/// thread.
class BookmarkModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// What a column is sorted by: a number for frequency and filter.
    static constexpr int kSortRole = Qt::UserRole;

    BookmarkModel();

    const QVector<Bookmark> &bookmarks() const { return m_bookmarks; }
    const Bookmark &at(int row) const { return m_bookmarks[row]; }

    /// All at once. In any order, as for add().
    void setBookmarks(const QVector<Bookmark> &bookmarks);

    /// The row that it got: after those of the same frequency.
    int add(const Bookmark &bookmark);

    /// Those in a part of the spectrum, both ends included. Valid until the next change.
    std::span<const Bookmark> between(double lowHz, double highHz) const;

    // Files.

    struct Import
    {
        int added = 0;
        int known = 0;        ///< were here already, field by field
        QStringList problems; ///< "line 7: ...", records that were left out
    };

    /// Adds what the file holds; see bookmarkcsv. False if it cannot be read, with nothing changed.
    bool importFile(const QString &file, Import *import);

    /// The file is whole or as it was before.
    bool exportFile(const QString &file);

    /// Why the last thing that failed did, in one line.
    const QString &error() const { return m_error; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

    /// Text as BookmarkField::set() reads it. False leaves the bookmark as it was, and error()
    /// tells why. A new frequency moves the row.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool removeRows(int row, int count, const QModelIndex &parent = {}) override;

private:
    void moveToPlace(int row);
    bool fail(const QString &text);

    QVector<Bookmark> m_bookmarks; // by frequency
    QString m_error;
};
} // namespace host
