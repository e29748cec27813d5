// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace host
{
/// A finite number as people write frequencies: "14074000", "7.1e6", "192k", "14.074M" (k and K for
/// thousands, M for millions). Nothing for any other text.
std::optional<double> parseNumber(const QString &text);

/// The shortest text that parseNumber() takes back to the same number, with a suffix where it is
/// shorter: 14074000 is "14.074M".
QString formatNumber(double value);

/// For a reader: 14074000 is "14.074 MHz".
QString formatHertz(double hertz);
} // namespace host
