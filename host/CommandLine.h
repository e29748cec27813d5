// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "HostSettings.h"

#include <QStringList>
#include <variant>

namespace host
{
/// A reason in one line, for stderr; the program ends with kUsageError.
struct UsageError
{
    QString text;
};

/// What --help and --version print.
struct Information
{
    QString text;
};

constexpr int kUsageError = 2;

/// Reads the program's arguments; the first one is the program's name. Checks everything that can
/// be checked without touching a file or the receiver.
std::variant<HostSettings, Information, UsageError> readCommandLine(const QStringList &arguments);
} // namespace host
