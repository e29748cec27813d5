// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace host
{
struct HostSettings;

/// Looks at the files of a run before anything is opened. A line on the first one that would
/// destroy another file of the run or cannot be made; empty if all is well.
///
/// An output must be no file that is read and no other output, whatever links lead to it, and its
/// folder must be there and take it. Devices and pipes may be named as often as one likes.
QString checkFiles(const HostSettings &settings);
} // namespace host
