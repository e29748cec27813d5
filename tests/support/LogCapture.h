// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace test
{
/// Collects the lines of Qt's message logger while it lives, from any thread, instead of printing
/// them. One at a time.
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    /// Lines so far, warnings and debug lines alike, oldest first.
    QStringList lines() const;
    QStringList warnings() const;

    /// True if a warning contains the text.
    bool warned(const QString &text) const;
    void clear();
};
} // namespace test
