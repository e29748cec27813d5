// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "panel/PanelRow.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace host
{
/// The text of a mapping as a table that is edited, see PanelMap. What is no line of a key or knob,
/// remarks above all, stays as a person wrote it.
class PanelText
{
public:
    explicit PanelText(const QString &text = {});

    QString text() const { return m_lines.join('\n'); }

    /// Empty: none.
    QString device() const;
    void setDevice(const QString &device);

    bool isGrabbing() const;
    void setGrabbing(bool grabbing);

    int count() const { return int(m_rows.size()); }
    PanelRow row(int i) const;

    /// Why a row cannot be used, be it by itself or beside the others; empty if it can.
    QString problemOf(int i) const;

    /// Keeps the remark after it.
    void setRow(int i, const PanelRow &row);

    /// Returns its place.
    int add(const PanelRow &row);
    void remove(int i);

private:
    static std::optional<PanelRow> read(const QString &line);
    static QString write(const PanelRow &row);
    int end() const;
    int lineOf(const QString &word) const;
    void setLine(const QString &word, const QString &line);
    void find();

    QStringList m_lines;
    std::vector<int> m_rows; // lines that are rows
};
} // namespace host
