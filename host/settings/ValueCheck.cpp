// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/ValueCheck.h"

#include "settings/Numbers.h"
#include "settings/UsageError.h"

#include <cmath>

namespace host
{
namespace
{
QString rangeText(double lowest, double highest)
{
    return QString("%1 to %2").arg(formatNumber(lowest), formatNumber(highest));
}

double numberIn(const QString &text, double lowest, double highest)
{
    const double value = numberFrom(text);
    if (value < lowest || value > highest)
        refuse(QString("%1 is outside %2").arg(text, rangeText(lowest, highest)));
    return value;
}
} // namespace

double numberFrom(const QString &text)
{
    const auto value = parseNumber(text);
    if (!value)
        refuse(QString("'%1' is not a number").arg(text));
    return *value;
}

ValueCheck anyText()
{
    return {[](const QString &text) { return QVariant(text); }, {}};
}

ValueCheck fileName()
{
    const auto read = [](const QString &text) {
        if (text.isEmpty())
            refuse("no file given");
        return QVariant(text);
    };
    return {read, {}};
}

ValueCheck number(double lowest, double highest)
{
    const auto read = [=](const QString &text) { return numberIn(text, lowest, highest); };
    return {read, ", " + rangeText(lowest, highest)};
}

ValueCheck wholeNumber(int lowest, int highest)
{
    const auto read = [=](const QString &text) {
        const double value = numberIn(text, lowest, highest);
        if (value != std::trunc(value))
            refuse(QString("'%1' is not a whole number").arg(text));
        return int(value);
    };
    return {read, ", " + rangeText(lowest, highest)};
}

ValueCheck oneOf(const QStringList &names)
{
    const auto read = [names](const QString &text) {
        for (const QString &name : names)
            if (name.compare(text, Qt::CaseInsensitive) == 0)
                return name;
        refuse(QString("'%1' is none of %2").arg(text, names.join(", ")));
    };
    return {read, ": " + names.mid(0, names.size() - 1).join(", ") + " or " + names.last()};
}
} // namespace host
