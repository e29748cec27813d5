// SPDX-License-Identifier: GPL-3.0-or-later
#include "memory/Csv.h"

#include <algorithm>

namespace host::csv
{
namespace
{
/// Goes through the text sign by sign.
class Reader
{
public:
    Reader(const QString &text, QChar separator) : m_text(text), m_separator(separator) { }

    QVector<Record> records()
    {
        QVector<Record> records;
        while (m_at < m_text.size()) {
            const Record record = next();
            if (record.fields != QStringList{QString()})
                records.append(record);
        }
        return records;
    }

private:
    Record next()
    {
        Record record{m_line, {}, true};
        do
            record.fields.append(isAt('"') ? quoted(record.isWhole) : plain());
        while (take(m_separator));
        const bool isReturn = take('\r');
        if (take('\n') || isReturn)
            ++m_line;
        return record;
    }

    bool isAt(QChar sign) const { return m_at < m_text.size() && m_text[m_at] == sign; }

    bool take(QChar sign)
    {
        const bool isThere = isAt(sign);
        m_at += isThere;
        return isThere;
    }

    /// Up to the end of the field.
    QString plain()
    {
        const int begin = m_at;
        while (m_at < m_text.size() && !isAt(m_separator) && !isAt('\r') && !isAt('\n'))
            ++m_at;
        return m_text.mid(begin, m_at - begin);
    }

    QString quoted(bool &isWhole)
    {
        QString field;
        take('"');
        for (; m_at < m_text.size(); ++m_at) {
            if (isAt('"')) {
                ++m_at;
                if (!isAt('"'))
                    return field + plain();
            }
            m_line += isAt('\n');
            field += m_text[m_at];
        }
        isWhole = false;
        return field;
    }

    const QString &m_text;
    QChar m_separator;
    int m_at = 0;
    int m_line = 1;
};
} // namespace

QVector<Record> read(const QString &text, QChar separator)
{
    return Reader(text, separator).records();
}

QString write(const QStringList &fields)
{
    QStringList quoted;
    for (const QString &field : fields) {
        const auto isSpecial = [](QChar sign) {
            return sign == ',' || sign == '"' || sign == '\r' || sign == '\n';
        };
        if (std::any_of(field.begin(), field.end(), isSpecial))
            quoted += '"' + QString(field).replace('"', "\"\"") + '"';
        else
            quoted += field;
    }
    return quoted.join(',') + "\r\n";
}
} // namespace host::csv
