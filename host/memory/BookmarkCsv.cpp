// SPDX-License-Identifier: GPL-3.0-or-later
#include "memory/BookmarkCsv.h"

#include "memory/BookmarkField.h"
#include "memory/Csv.h"

#include <QCoreApplication>
#include <QTextCodec>

#include <optional>

namespace host::bookmarkcsv
{
namespace
{
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(BookmarkField)
};

/// The text of the bytes, without a byte order mark; nothing if they are not UTF-8.
std::optional<QString> decoded(const QByteArray &bytes)
{
    QTextCodec::ConverterState state;
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0 || bytes.contains('\0'))
        return std::nullopt;
    return text;
}

/// The one that is in the names of the columns.
QChar separatorOf(const QString &text)
{
    const QString names = text.left(text.indexOf('\n'));
    for (const char separator : {',', ';', '\t'})
        if (names.contains(separator))
            return separator;
    return ',';
}

/// Throws a text that says what is wrong.
Bookmark bookmarkOf(const csv::Record &record, const QStringList &columns)
{
    if (!record.isWhole)
        throw Text::tr("the closing quotation mark is missing");
    if (record.fields.size() > columns.size())
        throw Text::tr("%1 fields instead of %2").arg(record.fields.size()).arg(columns.size());
    Bookmark bookmark;
    // The usual one, where there is no other.
    const BookmarkField &mode = bookmarkFields()[kModeField];
    mode.set(bookmark, mode.text(bookmark));
    for (const BookmarkField &field : bookmarkFields()) {
        const QString text = record.fields.value(columns.indexOf(field.key));
        const bool isFrequency = &field == &bookmarkFields()[kFrequencyField];
        if (!text.trimmed().isEmpty() || isFrequency)
            field.set(bookmark, text);
    }
    return bookmark;
}
} // namespace

Result read(const QByteArray &bytes)
{
    Result result;
    const auto text = decoded(bytes);
    if (!text) {
        result.error = Text::tr("is not text in UTF-8");
        return result;
    }
    const auto records = csv::read(*text, separatorOf(*text));
    QStringList columns;
    if (!records.isEmpty())
        for (const QString &name : records.first().fields)
            columns += name.trimmed().toLower();
    const QString frequency = bookmarkFields()[kFrequencyField].key;
    if (!columns.contains(frequency)) {
        result.error = Text::tr("has no column '%1' in its first line").arg(frequency);
        return result;
    }
    for (int i = 1; i < records.size(); ++i) {
        try {
            result.bookmarks += bookmarkOf(records[i], columns);
        } catch (const QString &problem) {
            result.problems += Text::tr("line %1: %2").arg(records[i].line).arg(problem);
        }
    }
    return result;
}

QByteArray write(const QVector<Bookmark> &bookmarks)
{
    QStringList fields;
    for (const BookmarkField &field : bookmarkFields())
        fields += field.key;
    QString text = csv::write(fields);
    for (const Bookmark &bookmark : bookmarks) {
        fields.clear();
        for (const BookmarkField &field : bookmarkFields())
            fields += field.text(bookmark);
        text += csv::write(fields);
    }
    return text.toUtf8();
}
} // namespace host::bookmarkcsv
