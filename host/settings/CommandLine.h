// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/HostSettings.h"
#include "settings/UsageError.h"

#include <QStringList>
#include <variant>

namespace host
{
/// What --help and --version print.
struct Information
{
    QString text;
};

/// Reads the program's arguments; the first one is the program's name. Checks everything that can
/// be checked without touching a file or the receiver.
std::variant<HostSettings, Information, UsageError> readCommandLine(const QStringList &arguments);
} // namespace host
