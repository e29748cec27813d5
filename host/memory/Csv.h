// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace host
{
/// Tables as text, after RFC 4180: records end with a line break, fields with a separator; a field
/// in quotation marks may hold both, and quotation marks twice.
namespace csv
{
struct Record
{
    int line = 1; ///< on which it begins, counted from 1
    QStringList fields;
    bool isWhole = true; ///< false: the last one, whose quotation mark is missing
};

/// Takes any line break and leaves empty lines out. A quotation mark in the middle of a field
/// stands for itself.
QVector<Record> read(const QString &text, QChar separator = ',');

/// A record with its line break.
QString write(const QStringList &fields);
} // namespace csv
} // namespace host
