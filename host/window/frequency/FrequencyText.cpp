// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frequency/FrequencyText.h"

#include <QRegularExpression>

#include <cmath>

namespace host
{
namespace
{
constexpr double kBelowIsMega = 1000.0;
constexpr double kBelowIsKilo = 100000.0;
} // namespace

std::optional<double> frequencyFrom(const QString &text)
{
    QString number = text.simplified().remove(' ');
    // As it is shown: 14.074.000
    static const QRegularExpression kGroups("^\\d{1,3}(\\.\\d{3}){2,3}$");
    if (kGroups.match(number).hasMatch())
        return number.remove('.').toDouble();
    static const QRegularExpression kForm("^(\\d*[.,]?\\d+|\\d+[.,])([kKmM]?)([hH][zZ])?$");
    const auto match = kForm.match(number);
    if (!match.hasMatch())
        return std::nullopt;
    bool isGood = false;
    const double value = match.captured(1).replace(',', '.').toDouble(&isGood);
    if (!isGood || !std::isfinite(value))
        return std::nullopt;
    const QString prefix = match.captured(2).toLower();
    if (prefix == "m")
        return value * 1e6;
    if (prefix == "k")
        return value * 1e3;
    if (!match.captured(3).isEmpty())
        return value;
    return value < kBelowIsMega ? value * 1e6 : value < kBelowIsKilo ? value * 1e3 : value;
}

QString frequencyText(double hertz)
{
    QString text = QString::number(std::llround(std::abs(hertz)));
    for (int i = text.size() - 3; i > 0; i -= 3)
        text.insert(i, '.');
    return text;
}
} // namespace host
