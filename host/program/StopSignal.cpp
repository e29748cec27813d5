// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/StopSignal.h"

#include <csignal>
#include <cstdint>
#include <ctime>
#include <sys/eventfd.h>
#include <unistd.h>

namespace host
{
namespace
{
constexpr itimerspec kPatience{{}, {1, 700'000'000}};
constexpr itimerspec kOff{};

constexpr char kForcedEnd[] =
    "velmora-host: the receiver or a file does not answer; what was not written yet is lost\n";

// A handler may do little more than write to a descriptor and start a timer; the event loop does
// the rest.
int g_event = -1;
timer_t g_timer;
volatile std::sig_atomic_t g_hasDeadline = 0;
volatile std::sig_atomic_t g_isRaised = 0;

void onSignal(int)
{
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(g_event, &one, sizeof one);
    g_isRaised = 1;
    if (g_hasDeadline)
        timer_settime(g_timer, 0, &kPatience, nullptr);
}

void onDeadline(int)
{
    [[maybe_unused]] const auto written = write(STDERR_FILENO, kForcedEnd, sizeof kForcedEnd - 1);
    _exit(StopSignal::kForced);
}

void setHandler(int signal, void (*handler)(int), int flags)
{
    struct sigaction action
    { };
    action.sa_handler = handler;
    action.sa_flags = flags;
    sigaction(signal, &action, nullptr);
}

void setHandlers(void (*stop)(int), void (*deadline)(int))
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        setHandler(signal, stop, int(SA_RESTART | SA_RESETHAND));
    setHandler(SIGALRM, deadline, SA_RESTART);
}

int openEvent()
{
    g_event = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    return g_event;
}
} // namespace

StopSignal::StopSignal(QObject *parent)
    : QObject(parent), m_notifier(openEvent(), QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
        m_notifier.setEnabled(false);
        emit raised();
    });
    g_hasDeadline = 0;
    g_isRaised = 0;
    timer_create(CLOCK_MONOTONIC, nullptr, &g_timer); // raises SIGALRM
    setHandlers(onSignal, onDeadline);
}

StopSignal::~StopSignal()
{
    setHandlers(SIG_DFL, SIG_DFL);
    timer_delete(g_timer);
    m_notifier.setEnabled(false);
    close(g_event);
}

// Between flag and look a signal may come; then the timer is started twice.
void StopSignal::setDeadline(bool isOn)
{
    g_hasDeadline = isOn;
    if (!isOn || g_isRaised)
        timer_settime(g_timer, 0, isOn ? &kPatience : &kOff, nullptr);
}

void StopSignal::endWithin(int seconds)
{
    const itimerspec time{{}, {seconds, 0}};
    if (!g_hasDeadline || !g_isRaised)
        timer_settime(g_timer, 0, &time, nullptr);
}

void StopSignal::cancelEnd()
{
    if (!g_hasDeadline || !g_isRaised)
        timer_settime(g_timer, 0, &kOff, nullptr);
}
} // namespace host
