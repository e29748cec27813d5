// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "memory/Bookmark.h"

#include <QVariant>

#include <array>

namespace host
{
/// One thing that a bookmark holds, as text: a column of tables and of files.
struct BookmarkField
{
    const char *key;   ///< in files
    const char *title; ///< to be translated in the context "BookmarkField"

    /// As set() reads it back.
    QString (*text)(const Bookmark &);

    /// For a reader, and to sort by.
    QString (*shown)(const Bookmark &);
    QVariant (*order)(const Bookmark &);

    /// Throws a QString that says in the user's language what is wrong with the text, with the
    /// bookmark as it was. A frequency is written as 14074000 or 14.074M, a filter as 300:2700 in
    /// hertz from the carrier; a new mode brings its usual filter.
    void (*set)(Bookmark &, const QString &text);

    QString titleText() const;
};

constexpr int kFrequencyField = 1;
constexpr int kModeField = 2;

/// Those that make the reception.
constexpr std::array<std::size_t, 3> kReceptionFields = {1, 2, 3};

/// By their columns.
const std::array<BookmarkField, 5> &bookmarkFields();
} // namespace host
