// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace host
{
/// Code of one of EngineLimits::kRatesHz, -1 if the receiver does not have the rate.
int deviceRateCode(double rateHz);
inline bool isDeviceRate(double rateHz)
{
    return deviceRateCode(rateHz) >= 0;
}

/// "48k, 96k, ...", for messages.
QString deviceRateNames();
} // namespace host
