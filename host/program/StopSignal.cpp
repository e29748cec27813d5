// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/StopSignal.h"

#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace host
{
namespace
{
// A handler may do little more than write to a descriptor; the event loop does the rest.
int g_event = -1;

void onSignal(int)
{
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(g_event, &one, sizeof one);
}

void setHandler(void (*handler)(int))
{
    struct sigaction action
    { };
    action.sa_handler = handler;
    action.sa_flags = int(SA_RESTART | SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &action, nullptr);
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
    setHandler(onSignal);
}

StopSignal::~StopSignal()
{
    setHandler(SIG_DFL);
    m_notifier.setEnabled(false);
    close(g_event);
}
} // namespace host
