// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace host
{
/// Why a file of somebody who does not tell came out too short, or cannot be made: asks the disk by
/// writing a little, which is taken back. Any thread.
QString diskRefusal(const QString &path);
} // namespace host
