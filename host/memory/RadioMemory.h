// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "memory/BandMemory.h"
#include "memory/BookmarkFile.h"
#include "memory/BookmarkModel.h"

#include <QObject>
#include <QTimer>

namespace host
{
class Radio;

/// What the radio comes back to: bookmarks, and each amateur band where it was left.
///
/// A window needs a button for each of bands().bands(), with the one of currentBand() marked, a
/// table on bookmarks() (see there), and message() where it shows what a person should read.
/// GUI thread.
class RadioMemory : public QObject
{
    Q_OBJECT

public:
    /// radio is loaded and must outlive this. Bookmarks are kept in the file, bands in the radio's
    /// settings.
    RadioMemory(Radio &radio, const QString &bookmarkFile = defaultPath());

    /// Leaves the bands to the radio, which saves them when it ends.
    ~RadioMemory() override;

    static QString defaultPath();

    BookmarkModel &bookmarks() { return m_bookmarks; }
    const BandMemory &bands() const { return m_bands; }

    /// What was found at the start that a person should read, a line each.
    const QStringList &notices() const { return m_file.notices(); }

    /// -1 outside of all bands.
    int currentBand() const;

    // False while the radio is locked or has no such band.

    /// Where the band was left.
    bool goToBand(int band);

    /// The next one above (1) or below (-1), round the end.
    bool goToNextBand(int direction);
    bool goTo(const Bookmark &bookmark);

    /// What is heard now, for a new bookmark.
    Bookmark here(const QString &name) const;

signals:
    void currentBandChanged(int band);

    /// Something a person should read, in one line.
    void message(const QString &text);

private:
    void settle();
    void keep();

    Radio &m_radio;
    BandMemory m_bands;
    BookmarkModel m_bookmarks;
    BookmarkFile m_file;
    QTimer m_settle;
    int m_currentBand = -1;
};
} // namespace host
