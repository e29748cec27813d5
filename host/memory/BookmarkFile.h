// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "memory/BookmarkModel.h"

#include <QObject>
#include <QTimer>

#include <future>

namespace host
{
/// Keeps the bookmarks of a model in a file, which is whole at any time: each change is there
/// within kSaveMs, also after a crash of the program. GUI thread; the file is written on another.
class BookmarkFile : public QObject
{
    Q_OBJECT

public:
    static constexpr int kSaveMs = 5000;

    /// The model must outlive this.
    BookmarkFile(BookmarkModel &model, const QString &path);

    /// Saves what has changed.
    ~BookmarkFile() override;

    /// Fills the model, with standard() if there is no file. A file that cannot be read is set
    /// aside under a name of its own, and nothing of it is lost; so is a copy of one of which some
    /// lines cannot be read. notices() tells of it.
    void load();
    const QStringList &notices() const { return m_notices; }

    /// Now. False: problem() has been told, and it is tried again after kSaveMs.
    bool save();

    bool isSaved() const { return !m_isChanged && !isSaving(); }

    /// What there is to begin with: the stations of the built-in band, and some that the world
    /// knows.
    static QVector<Bookmark> standard();

signals:
    /// One line on a file that cannot be written; once, until it can be.
    void problem(const QString &text);

private:
    static QString write(const QString &path, const QVector<Bookmark> &bookmarks);

    bool isSaving() const { return m_later.valid(); }
    void onChange();
    void saveLater();
    void finishLater();
    bool finish(bool isSaved, const QString &error);
    bool read();
    void setAside(const QString &reason, bool isCopy);

    BookmarkModel &m_model;
    QString m_path;
    QStringList m_notices;
    QTimer m_timer;
    bool m_isChanged = false;
    bool m_isFailing = false;
    bool m_isKept = true;         // what the file held is in the model or set aside
    std::future<QString> m_later; // why what is under way failed; empty if it did not
};
} // namespace host
