// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/PanelText.h"

#include "panel/PanelMap.h"

namespace host
{
namespace
{
const QString kDevice = QStringLiteral("device");
const QString kGrab = QStringLiteral("grab");

// In the order of PanelRow::Kind.
const QStringList kKinds = {"key", "knob", "shortcut", "turn"};

QStringList wordsOf(const QString &line)
{
    return line.section('#', 0, 0).simplified().split(' ', Qt::SkipEmptyParts);
}
} // namespace

PanelText::PanelText(const QString &text) : m_lines(text.split('\n'))
{
    find();
}

void PanelText::find()
{
    m_rows.clear();
    for (int i = 0; i < m_lines.size(); ++i)
        if (read(m_lines[i]))
            m_rows.push_back(i);
}

std::optional<PanelRow> PanelText::read(const QString &line)
{
    QStringList words = wordsOf(line);
    const int kind = words.isEmpty() ? -1 : kKinds.indexOf(words.takeFirst());
    if (kind < 0)
        return {};
    PanelRow row;
    row.kind = PanelRow::Kind(kind);
    const auto take = [&words] { return words.isEmpty() ? QString() : words.takeFirst(); };
    row.control = take();
    if (row.kind == PanelRow::Kind::Turn)
        row.control = (row.control + ' ' + take()).trimmed();
    row.action = take();
    row.argument = words.join(' ');
    return row;
}

QString PanelText::write(const PanelRow &row)
{
    return QStringList{kKinds[int(row.kind)], row.control, row.action, row.argument}
        .join(' ')
        .simplified();
}

/// Before the empty line with which a file ends.
int PanelText::end() const
{
    return m_lines.last().trimmed().isEmpty() ? m_lines.size() - 1 : m_lines.size();
}

/// The last one counts; -1: none.
int PanelText::lineOf(const QString &word) const
{
    int line = m_lines.size() - 1;
    while (line >= 0 && wordsOf(m_lines[line]).value(0) != word)
        --line;
    return line;
}

/// In place of all lines that begin with the word.
void PanelText::setLine(const QString &word, const QString &line)
{
    int place = -1;
    for (int i; (i = lineOf(word)) >= 0; place = i)
        m_lines.removeAt(i);
    // A new one goes before the keys and knobs, where a person looks for it.
    if (place < 0)
        place = m_rows.empty() ? end() : m_rows.front();
    if (!line.isEmpty())
        m_lines.insert(place, line);
    find();
}

QString PanelText::device() const
{
    const int line = lineOf(kDevice);
    return line < 0 ? QString() : wordsOf(m_lines[line]).mid(1).join(' ');
}

void PanelText::setDevice(const QString &device)
{
    const QString name = wordsOf(device).join(' ');
    if (name != this->device())
        setLine(kDevice, name.isEmpty() ? QString() : kDevice + ' ' + name);
}

bool PanelText::isGrabbing() const
{
    return lineOf(kGrab) >= 0;
}

void PanelText::setGrabbing(bool grabbing)
{
    if (grabbing != isGrabbing())
        setLine(kGrab, grabbing ? kGrab : QString());
}

PanelRow PanelText::row(int i) const
{
    return *read(m_lines[m_rows[std::size_t(i)]]);
}

QString PanelText::problemOf(int i) const
{
    return PanelMap(text()).problemOf(m_rows[std::size_t(i)] + 1);
}

void PanelText::setRow(int i, const PanelRow &row)
{
    QString &line = m_lines[m_rows[std::size_t(i)]];
    const int remark = line.indexOf('#');
    line = remark < 0 ? write(row) : write(row) + "  " + line.mid(remark);
}

int PanelText::add(const PanelRow &row)
{
    m_lines.insert(m_rows.empty() ? end() : m_rows.back() + 1, write(row));
    find();
    return count() - 1;
}

void PanelText::remove(int i)
{
    m_lines.removeAt(m_rows[std::size_t(i)]);
    find();
}
} // namespace host
