// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDebug>
#include <QMessageLogger>

/// The one place where log lines of the signal and device code are composed.
///
/// A line is a list of parts, usually the function's signature, the source line and a text; they
/// are written through Qt's message logger ("default" category) in the manner of QDebug. Any thread
/// may log. The good path of the sample road never does.
namespace vm::log
{
template <typename... Parts>
void warning(const Parts &...parts)
{
    auto line = QMessageLogger().warning();
    (line << ... << parts);
}

template <typename... Parts>
void debug(const Parts &...parts)
{
    auto line = QMessageLogger().debug();
    (line << ... << parts);
}
} // namespace vm::log
