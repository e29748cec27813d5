// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <csignal>
#include <mutex>
#include <thread>

struct itimerspec;

namespace host
{
/// Turns the first SIGINT, SIGTERM or SIGHUP (the terminal was closed) into a Qt signal on the
/// thread that made it; the second one ends the program as usual. One per process.
///
/// Threads:
/// 1. Maker: constructor and destructor, the Qt signal.
/// 2. Watch: the signals and the clock. It waits for nothing else, so it ends a program whose other
///    threads all hang.
/// 3. Any: when the program has to end.
///
/// The maker, and so every thread that is made later, is not interrupted by these signals: no call
/// of a library or of the disk is cut short by them.
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
    /// asked for stays.
    void endWithin(int seconds);
    void cancelEnd();

signals:
    void raised();

private:
    void watch();
    void onSignal();
    void setTimer(const itimerspec &time);

    const int m_timer; // a descriptor, on the monotonic clock
    sigset_t m_blockedBefore;
    std::mutex m_mutex;

    // Guarded by m_mutex, and with them whether the timer runs.
    bool m_hasDeadline = false;
    bool m_isRaised = false;
    bool m_isEnding = false;

    std::thread m_watch; // last: runs with everything else there
};
} // namespace host
