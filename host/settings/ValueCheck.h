// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>

namespace host
{
/// How the text after an option becomes its value.
struct ValueCheck
{
    /// Throws a UsageError, which need not name the option.
    std::function<QVariant(const QString &text)> read;

    /// The range for the help, to be put after a phrase: ", 1 to 257" or ": long, slow or fast".
    QString range;
};

ValueCheck anyText();

/// A file or folder, of which only the name is looked at.
ValueCheck fileName();

/// A double as parseNumber() takes it, both limits included.
ValueCheck number(double lowest, double highest);

/// An int.
ValueCheck wholeNumber(int lowest, int highest);

/// One of these names, in upper or lower case; the value is the name as it stands in the list.
ValueCheck oneOf(const QStringList &names);

/// The number that a text stands for; throws a UsageError if it is none.
double numberFrom(const QString &text);
} // namespace host
