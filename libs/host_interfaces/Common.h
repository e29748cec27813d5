// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace Common
{
/// Folder of the host's and its plugins' settings files, without a slash at the end. It may not
/// exist yet. Where the system names no place for settings it is the program's own folder.
QString settingsPath();
} // namespace Common
