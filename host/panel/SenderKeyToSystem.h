// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace host
{
/// Sends a keystroke to the desktop, where it reaches the program that has the focus, as from the
/// keyboard: for a logging program that is worked beside the receiver.
class SenderKeyToSystem
{
public:
    virtual ~SenderKeyToSystem() = default;

    /// Keys that are pressed one after the other and released in turn, joined by "+": names as the
    /// X Window System has them (Control_L, F5, Return, a), or Ctrl, Shift, Alt and Super. False:
    /// nothing was sent, error() tells why in one line.
    virtual bool send(const QString &keys) = 0;
    const QString &error() const { return m_error; }

protected:
    bool fail(const QString &text)
    {
        m_error = text;
        return false;
    }

private:
    QString m_error;
};
} // namespace host
