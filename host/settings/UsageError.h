// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace host
{
/// A reason in one line, for stderr; the program ends with kUsageError.
struct UsageError
{
    QString text;
};

constexpr int kUsageError = 2;

[[noreturn]] inline void refuse(const QString &text)
{
    throw UsageError{text};
}
} // namespace host
