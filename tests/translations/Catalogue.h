// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <tuple>

namespace test
{
/// A file of translations, as Linguist's tools write it.
struct Catalogue
{
    struct Text
    {
        QString context;
        QString source;
        QString comment;

        bool operator==(const Text &) const = default;
        bool operator<(const Text &other) const
        {
            return std::tie(context, source, comment)
                < std::tie(other.context, other.source, other.comment);
        }
    };

    struct Translation
    {
        QStringList forms; ///< one, or those of the plural
        bool isFinished = true;
    };

    QMap<Text, Translation> texts;

    /// Empty if the file cannot be read to its end.
    static Catalogue read(const QString &path);
};
} // namespace test
