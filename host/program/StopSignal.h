// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace host
{
/// Turns the first SIGINT, SIGTERM or SIGHUP (the terminal was closed) into a Qt signal on the
/// thread that made it; the second one ends the program as usual. One per process.
class StopSignal : public QObject
{
    Q_OBJECT

public:
    /// Status of a program that had to be ended, see setDeadline().
    static constexpr int kForced = 1;

    explicit StopSignal(QObject *parent = nullptr);
    ~StopSignal() override;

    /// While it is on, a program that is still there 1.7 s after the signal (or after now, if the
    /// signal has come) is ended without ceremony: it hangs in a call of the receiver's library or
    /// of the disk.
    void setDeadline(bool isOn);

    /// The same so many seconds from now without a signal, and never mind after all. What a signal
    /// asked for stays. Any thread.
    void endWithin(int seconds);
    void cancelEnd();

signals:
    void raised();

private:
    QSocketNotifier m_notifier;
};
} // namespace host
