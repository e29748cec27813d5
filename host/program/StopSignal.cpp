// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/StopSignal.h"

#include <cerrno>
#include <cstdint>
#include <iterator>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace host
{
namespace
{
constexpr itimerspec kPatience{{}, {1, 700'000'000}};
constexpr itimerspec kOff{};

constexpr char kForcedEnd[] =
    "velmora-host: the receiver or a file does not answer; what was not written yet is lost\n";

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

int g_event = -1;

void wakeWatch()
{
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(g_event, &one, sizeof one);
}

// A handler may do little more than write to a descriptor. Threads that were there before run it
// in the middle of what they do, which may be about to look at errno.
void onStop(int)
{
    const int before = errno;
    wakeWatch();
    errno = before;
}

void setHandlers(void (*handler)(int))
{
    struct sigaction action
    { };
    action.sa_handler = handler;
    action.sa_flags = int(SA_RESTART | SA_RESETHAND);
    for (const int signal : kSignals)
        sigaction(signal, &action, nullptr);
}

/// What came through an event or a timer, once.
bool take(int descriptor)
{
    std::uint64_t count = 0;
    return read(descriptor, &count, sizeof count) == sizeof count;
}

// By no stream of the C library: the thread that hangs may have its lock.
[[noreturn]] void endByForce()
{
    [[maybe_unused]] const auto written = write(STDERR_FILENO, kForcedEnd, sizeof kForcedEnd - 1);
    _exit(StopSignal::kForced);
}
} // namespace

StopSignal::StopSignal(QObject *parent)
    : QObject(parent), m_timer(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC))
{
    g_event = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    m_watch = std::thread(&StopSignal::watch, this);
    // Then the kernel gives them to the watch, which is in no call that they disturb.
    sigset_t held;
    sigemptyset(&held);
    for (const int signal : kSignals)
        sigaddset(&held, signal);
    pthread_sigmask(SIG_BLOCK, &held, &m_blockedBefore);
    setHandlers(onStop);
}

StopSignal::~StopSignal()
{
    setHandlers(SIG_DFL);
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    wakeWatch();
    m_watch.join();
    pthread_sigmask(SIG_SETMASK, &m_blockedBefore, nullptr);
    close(g_event);
    close(m_timer);
}

void StopSignal::watch()
{
    pollfd descriptors[] = {{g_event, POLLIN, 0}, {m_timer, POLLIN, 0}};
    for (;;) {
        poll(descriptors, std::size(descriptors), -1); // a handler that ran here ends it as well
        const std::lock_guard lock(m_mutex);
        if (m_isEnding)
            return;
        if (take(m_timer))
            endByForce();
        if (take(g_event) && !m_isRaised)
            onSignal();
    }
}

void StopSignal::onSignal()
{
    m_isRaised = true;
    if (m_hasDeadline)
        setTimer(kPatience);
    QMetaObject::invokeMethod(this, &StopSignal::raised, Qt::QueuedConnection);
}

void StopSignal::setTimer(const itimerspec &time)
{
    timerfd_settime(m_timer, 0, &time, nullptr);
}

void StopSignal::setDeadline(bool isOn)
{
    const std::lock_guard lock(m_mutex);
    m_hasDeadline = isOn;
    if (!isOn || m_isRaised)
        setTimer(isOn ? kPatience : kOff);
}

void StopSignal::endWithin(int seconds)
{
    const std::lock_guard lock(m_mutex);
    if (!m_hasDeadline || !m_isRaised)
        setTimer({{}, {seconds, 0}});
}

void StopSignal::cancelEnd()
{
    const std::lock_guard lock(m_mutex);
    if (!m_hasDeadline || !m_isRaised)
        setTimer(kOff);
}
} // namespace host
