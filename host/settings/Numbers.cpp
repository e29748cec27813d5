// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Numbers.h"

#include <QLocale>

#include <cmath>

namespace host
{
namespace
{
double multiplierOf(QChar suffix)
{
    if (suffix == 'k' || suffix == 'K')
        return 1e3;
    return suffix == 'M' ? 1e6 : 1.0;
}
} // namespace

std::optional<double> parseNumber(const QString &text)
{
    if (text.isEmpty())
        return std::nullopt;
    const double multiplier = multiplierOf(text.back());
    const QString digits = multiplier == 1.0 ? text : text.chopped(1);
    // QString::toDouble() also takes "nan", "inf" and blanks around the digits.
    if (digits.isEmpty() || digits.front().isSpace() || digits.back().isSpace())
        return std::nullopt;
    bool ok = false;
    const double value = digits.toDouble(&ok) * multiplier;
    return ok && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

namespace
{
/// value with the unit's prefix, and blank in front of it.
QString scaled(double value, const char *blank)
{
    const auto text = [](double number) {
        return QLocale().toString(number, 'g', QLocale::FloatingPointShortest);
    };
    if (std::abs(value) >= 1e6)
        return text(value / 1e6) + blank + 'M';
    return std::abs(value) >= 1e3 ? text(value / 1e3) + blank + 'k' : text(value) + blank;
}
} // namespace

QString formatNumber(double value)
{
    return scaled(value, "");
}

QString formatHertz(double hertz)
{
    return scaled(hertz, " ") + "Hz";
}
} // namespace host
