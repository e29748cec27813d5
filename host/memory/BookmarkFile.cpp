// SPDX-License-Identifier: GPL-3.0-or-later
#include "memory/BookmarkFile.h"

#include "memory/BookmarkCsv.h"

#include "vm_library/source/file/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace host
{
namespace
{
Bookmark bookmark(const QString &name, double hertz, const char *modeName, const QString &note)
{
    const ReceptionMode &mode = *findMode(modeName);
    return {name, {hertz, mode.mode, mode.filterLowHz, mode.filterHighHz}, note};
}

/// A name next to the file's own that nobody has yet.
QString freeName(const QString &path)
{
    QString name = path + ".damaged";
    for (int i = 2; QFileInfo::exists(name); ++i)
        name = path + QString(".damaged-%1").arg(i);
    return name;
}
} // namespace

BookmarkFile::BookmarkFile(BookmarkModel &model, const QString &path) : m_model(model), m_path(path)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(kSaveMs);
    connect(&m_timer, &QTimer::timeout, this, &BookmarkFile::saveLater);
    connect(&model, &BookmarkModel::modelReset, this, &BookmarkFile::onChange);
    connect(&model, &BookmarkModel::rowsInserted, this, &BookmarkFile::onChange);
    connect(&model, &BookmarkModel::rowsRemoved, this, &BookmarkFile::onChange);
    connect(&model, &BookmarkModel::dataChanged, this, &BookmarkFile::onChange);
}

BookmarkFile::~BookmarkFile()
{
    const bool hasFailed = m_later.valid() && !m_later.get().isEmpty();
    if (m_isChanged || hasFailed)
        save();
}

// A change after the first one does not put it off.
void BookmarkFile::onChange()
{
    m_isChanged = true;
    if (!m_timer.isActive())
        m_timer.start();
}

void BookmarkFile::load()
{
    m_notices.clear();
    m_isKept = true;
    if (!read())
        m_model.setBookmarks(standard());
    // The file has what the model has, or there is none.
    m_timer.stop();
    m_isChanged = false;
}

bool BookmarkFile::read()
{
    QFile file(m_path);
    if (!file.exists())
        return false;
    if (!file.open(QIODevice::ReadOnly)) {
        setAside(file.errorString(), false);
        return false;
    }
    const auto result = bookmarkcsv::read(file.readAll());
    file.close();
    if (!result.error.isEmpty()) {
        setAside(result.error, false);
        return false;
    }
    if (!result.problems.isEmpty())
        setAside(result.problems.join("; "), true);
    m_model.setBookmarks(result.bookmarks);
    return true;
}

void BookmarkFile::setAside(const QString &reason, bool isCopy)
{
    const QString name = freeName(m_path);
    m_isKept = isCopy ? QFile::copy(m_path, name) : QFile::rename(m_path, name);
    if (!m_isKept)
        m_notices += tr("The bookmarks in %1 cannot be read (%2), nor put aside; changes of this "
                        "run are not kept.")
                         .arg(m_path, reason);
    else if (isCopy)
        m_notices += tr("Some bookmarks in %1 cannot be read (%2); the file as it was is kept as "
                        "%3.")
                         .arg(m_path, reason, name);
    else
        m_notices += tr("The bookmarks in %1 cannot be read (%2); the file is kept as %3, and the "
                        "standard ones are there instead.")
                         .arg(m_path, reason, name);
}

bool BookmarkFile::save()
{
    if (isSaving())
        m_later.get(); // what this one does anew
    const QString error = m_isKept ? write(m_path, m_model.bookmarks()) : QString();
    return finish(m_isKept && error.isEmpty(), error);
}

/// On a thread of its own: a busy disk takes its time, and the window is not to wait for it.
void BookmarkFile::saveLater()
{
    if (!m_isKept) {
        finish(false, {});
        return;
    }
    if (isSaving()) {
        m_timer.start();
        return;
    }
    m_isChanged = false; // what changes from here on is saved the next time
    m_later = std::async(std::launch::async, [this, bookmarks = m_model.bookmarks()] {
        const QString error = write(m_path, bookmarks);
        QMetaObject::invokeMethod(
            this, [this] { finishLater(); }, Qt::QueuedConnection);
        return error;
    });
}

void BookmarkFile::finishLater()
{
    if (!m_later.valid())
        return;
    const QString error = m_later.get();
    if (!error.isEmpty())
        finish(false, error);
    else
        m_isFailing = false;
}

QString BookmarkFile::write(const QString &path, const QVector<Bookmark> &bookmarks)
{
    QString error;
    QDir().mkpath(QFileInfo(path).path()); // without a folder the file tells why
    vm::file::writeWhole(path, bookmarkcsv::write(bookmarks), &error);
    return error;
}

bool BookmarkFile::finish(bool isSaved, const QString &error)
{
    if (!isSaved && !m_isFailing)
        emit problem(
            m_isKept ? tr("The bookmarks cannot be saved: %1").arg(error) : m_notices.join(' '));
    m_isFailing = !isSaved;
    m_isChanged = !isSaved;
    if (m_isChanged)
        m_timer.start();
    else
        m_timer.stop();
    return isSaved;
}

QVector<Bookmark> BookmarkFile::standard()
{
    const QString here = tr("in the built-in band");
    return {
        bookmark("DCF77", 77.5e3, "CW", tr("time signal, Germany")),
        bookmark(tr("CQ in Morse code"), 7.085e6, "CW", here),
        bookmark(tr("Voice, lower side band"), 7.096e6, "LSB", here),
        bookmark(tr("Voice, upper side band"), 7.105e6, "USB", here),
        bookmark(tr("Voice, AM"), 7.112e6, "AM", here),
        bookmark(tr("Voice, narrow FM"), 7.118e6, "NFM", here),
        bookmark("WWV", 10e6, "AM", tr("time signal, USA")),
        bookmark(tr("FT8, 20 m"), 14.074e6, "USB", tr("data, worldwide by day")),
    };
}
} // namespace host
