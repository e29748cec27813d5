// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDebug>
#include <QLoggingCategory>
#include <QMessageLogger>

/// The one place where log lines of the signal and device code are composed.
///
/// A line is a list of parts, usually the function's signature, the source line and a text; they
/// are written through Qt's message logger ("default" category) in the manner of QDebug. Any thread
/// may log. The good path of the sample road never does, but for one debug line a block: a debug
/// line that nobody wants costs the question whether someone does.
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
    // The logger asks this itself, but not before the line is composed.
    if (!QLoggingCategory::defaultCategory()->isDebugEnabled())
        return;
    auto line = QMessageLogger().debug();
    (line << ... << parts);
}
} // namespace vm::log
