// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/file/Time.h"

#include <QDateTime>

namespace vm::file
{
Time Time::currentDateTime()
{
    const QDateTime now = QDateTime::currentDateTime();
    const QDate date = now.date();
    const QTime time = now.time();
    return {
        .year = std::uint16_t(date.year()),
        .month = std::uint16_t(date.month()),
        .dayOfWeek = std::uint16_t(date.dayOfWeek()),
        .day = std::uint16_t(date.day()),
        .hour = std::uint16_t(time.hour()),
        .minute = std::uint16_t(time.minute()),
        .second = std::uint16_t(time.second()),
        .millisecond = std::uint16_t(time.msec()),
    };
}
} // namespace vm::file
