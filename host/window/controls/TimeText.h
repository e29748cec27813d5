// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace host
{
/// Whole minutes and seconds, as in "12:05".
inline QString timeText(double seconds)
{
    const int whole = int(seconds);
    return QString("%1:%2").arg(whole / 60).arg(whole % 60, 2, 10, QChar('0'));
}
} // namespace host
