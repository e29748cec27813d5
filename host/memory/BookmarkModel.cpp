// SPDX-License-Identifier: GPL-3.0-or-later
#include "memory/BookmarkModel.h"

#include "memory/BookmarkCsv.h"
#include "memory/BookmarkField.h"
#include "settings/Language.h"

#include "vm_library/source/file/WholeFile.h"

#include <QFile>

#include <algorithm>

namespace host
{
namespace
{
// A hundred thousand bookmarks; more is a recording that somebody took for a table.
constexpr qint64 kLargestFile = 16 << 20;

bool isLower(const Bookmark &a, const Bookmark &b)
{
    return a.reception.frequencyHz < b.reception.frequencyHz;
}

} // namespace

BookmarkModel::BookmarkModel()
{
    say(this, [this] { emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1); });
}

void BookmarkModel::setBookmarks(const QVector<Bookmark> &bookmarks)
{
    beginResetModel();
    m_bookmarks = bookmarks;
    std::stable_sort(m_bookmarks.begin(), m_bookmarks.end(), isLower);
    endResetModel();
}

int BookmarkModel::add(const Bookmark &bookmark)
{
    const auto place = std::upper_bound(m_bookmarks.begin(), m_bookmarks.end(), bookmark, isLower);
    const int row = int(place - m_bookmarks.begin());
    beginInsertRows({}, row, row);
    m_bookmarks.insert(row, bookmark);
    endInsertRows();
    return row;
}

std::span<const Bookmark> BookmarkModel::between(double lowHz, double highHz) const
{
    const auto frequency = [](const Bookmark &bookmark) { return bookmark.reception.frequencyHz; };
    const auto begin = std::ranges::lower_bound(m_bookmarks, lowHz, {}, frequency);
    const auto end = std::ranges::upper_bound(m_bookmarks, highHz, {}, frequency);
    return begin < end ? std::span(&*begin, std::size_t(end - begin)) : std::span<const Bookmark>();
}

bool BookmarkModel::importFile(const QString &name, Import *import)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return fail(name + ": " + file.errorString());
    if (file.size() > kLargestFile)
        return fail(tr("%1 is too large for bookmarks").arg(name));
    const auto read = bookmarkcsv::read(file.readAll());
    if (!read.error.isEmpty())
        return fail(name + ' ' + read.error);
    *import = {0, 0, read.problems};
    QVector<Bookmark> all = m_bookmarks;
    for (const Bookmark &bookmark : read.bookmarks) {
        const bool isKnown = m_bookmarks.contains(bookmark);
        ++(isKnown ? import->known : import->added);
        if (!isKnown)
            all += bookmark;
    }
    if (import->added > 0)
        setBookmarks(all);
    return true;
}

bool BookmarkModel::exportFile(const QString &name)
{
    QString error;
    return vm::file::writeWhole(name, bookmarkcsv::write(m_bookmarks), &error) || fail(error);
}

int BookmarkModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_bookmarks.size();
}

int BookmarkModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(bookmarkFields().size());
}

QVariant BookmarkModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section < columnCount())
        return bookmarkFields()[std::size_t(section)].titleText();
    return QAbstractTableModel::headerData(section, orientation, role);
}

QVariant BookmarkModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const BookmarkField &field = bookmarkFields()[std::size_t(index.column())];
    const Bookmark &bookmark = at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return field.shown(bookmark);
    case Qt::EditRole:
        return field.text(bookmark);
    case kSortRole:
        return field.order(bookmark);
    default:
        return {};
    }
}

bool BookmarkModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != Qt::EditRole)
        return false;
    const int row = index.row();
    Bookmark changed = at(row);
    try {
        bookmarkFields()[std::size_t(index.column())].set(changed, value.toString().trimmed());
    } catch (const QString &problem) {
        return fail(problem);
    }
    if (changed == at(row))
        return true;
    m_bookmarks[row] = changed;
    emit dataChanged(this->index(row, 0), this->index(row, columnCount() - 1));
    if (index.column() == kFrequencyField)
        moveToPlace(row);
    return true;
}

/// All others are in order.
void BookmarkModel::moveToPlace(int row)
{
    const Bookmark moved = at(row);
    QVector<Bookmark> others = m_bookmarks;
    others.removeAt(row);
    const auto place = std::upper_bound(others.begin(), others.end(), moved, isLower);
    const int to = int(place - others.begin());
    if (to == row)
        return;
    // Qt counts the place with the row still in its own.
    beginMoveRows({}, row, row, {}, to > row ? to + 1 : to);
    m_bookmarks.move(row, to);
    endMoveRows();
}

Qt::ItemFlags BookmarkModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.isValid() ? flags | Qt::ItemIsEditable : flags;
}

bool BookmarkModel::removeRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || row < 0 || count < 1 || row > m_bookmarks.size() - count)
        return false;
    beginRemoveRows({}, row, row + count - 1);
    m_bookmarks.remove(row, count);
    endRemoveRows();
    return true;
}

bool BookmarkModel::fail(const QString &text)
{
    m_error = text;
    return false;
}
} // namespace host
