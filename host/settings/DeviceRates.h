// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace host
{
/// The rates at which the receiver can send IQ, in hertz; the place in this list is the code that
/// the driver takes.
constexpr int kDeviceRatesHz[] = {
    48000, 96000, 192000, 384000, 768000, 1536000, 1920000, 2560000, 3072000};

/// Code of a rate, -1 if the receiver does not have it.
int deviceRateCode(double rateHz);
inline bool isDeviceRate(double rateHz)
{
    return deviceRateCode(rateHz) >= 0;
}

/// "48k, 96k, ...", for messages.
QString deviceRateNames();
} // namespace host
