// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace host
{
/// Why a file of somebody who does not tell came out too short, or cannot be made: asks the disk by
/// writing a little, which is taken back. Any thread.
QString diskRefusal(const QString &path);

/// The same of a file that is still being written, which is left alone: asks with another one in
/// the same folder, of which nothing stays. Empty if the disk takes it. Any thread.
QString diskRefusalBeside(const QString &path);
} // namespace host
