// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/DeviceRates.h"

#include "settings/Numbers.h"

#include "host_interfaces/EngineLimits.h"

#include <QStringList>

#include <algorithm>

namespace host
{
int deviceRateCode(double rateHz)
{
    const auto &rates = EngineLimits::kRatesHz;
    const auto *const rate = std::find(rates.begin(), rates.end(), rateHz);
    return rate == rates.end() ? -1 : int(rate - rates.begin());
}

QString deviceRateNames()
{
    QStringList names;
    for (const int rate : EngineLimits::kRatesHz)
        names += formatNumber(rate);
    return names.join(", ");
}
} // namespace host
