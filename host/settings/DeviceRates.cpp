// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/DeviceRates.h"

#include "settings/Numbers.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

namespace host
{
int deviceRateCode(double rateHz)
{
    const auto *rate = std::find(std::begin(kDeviceRatesHz), std::end(kDeviceRatesHz), rateHz);
    return rate == std::end(kDeviceRatesHz) ? -1 : int(rate - std::begin(kDeviceRatesHz));
}

QString deviceRateNames()
{
    QStringList names;
    for (const int rate : kDeviceRatesHz)
        names += formatNumber(rate);
    return names.join(", ");
}
} // namespace host
