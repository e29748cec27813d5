// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/OptionTable.h"

namespace host
{
const std::vector<Option> &optionTable()
{
    static const std::vector<Option> table = [] {
        std::vector<Option> all;
        for (const auto &part : {receptionOptions(), outputOptions(), toolOptions()})
            all.insert(all.end(), part.begin(), part.end());
        return all;
    }();
    return table;
}

QString Option::helpText() const
{
    QString text = help + value.range + '.';
    if (standard)
        text += QString(" Default %1.").arg(standard);
    if (!otherwise.isEmpty())
        text += " Default: " + otherwise + '.';
    return text + modes.remark();
}

QString Option::reportKey() const
{
    QString key = QString(name).replace('-', '_');
    for (const char *unit : {"DBM", "DB", "HZ", "MS", "US"})
        if (QString(argument).startsWith(unit))
            return key + '_' + QString(unit).toLower();
    return key;
}
} // namespace host
