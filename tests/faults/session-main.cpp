// SPDX-License-Identifier: GPL-3.0-or-later
// One receiver under one fault: two sessions with it and one after it has gone. Prints what the
// plugin warned of and what was seen; the status is 0 if the last session had its stream and
// nothing was left behind.
//
//     fault-session FAULT
#include "FaultyDevice.h"
#include "Session.h"

#include "support/applicationOffscreen.h"

#include <QDir>

#include <cstdio>
#include <map>
#include <mutex>
#include <thread>

namespace
{
constexpr int kFaultySearchMs = 200; // a scan that finds something is quicker
constexpr int kFaultyFlowMs = 800;   // a stream that flows brings something after 50 ms
constexpr int kSearchMs = 10000;     // two scans take 4 s
constexpr int kFlowMs = 8000;        // on a machine that is ten times too busy
constexpr int kThreadEndMs = 1000;

std::mutex g_mutex;
std::map<QString, unsigned> g_warnings; // guarded by g_mutex

void onMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtDebugMsg)
        return;
    const std::lock_guard lock(g_mutex);
    ++g_warnings[text.simplified()];
}

int threadCount()
{
    return int(QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size());
}

bool threadsEnd(int wanted)
{
    for (int i = 0; i < kThreadEndMs && threadCount() > wanted; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return threadCount() <= wanted;
}

bool runSessions()
{
    Session session;
    for (int i = 0; i < 2; ++i) {
        const bool flowed = session.listen(kFaultySearchMs, kFaultyFlowMs);
        std::printf("session %d %s\n", i + 1, flowed ? "flowed" : "had no stream");
    }
    std::printf("struck at call %u\n", faulty::calls());
    faulty::mend();
    bool flowed = session.listen(kSearchMs, kFlowMs);
    if (!flowed) {
        std::puts("replugged");
        faulty::replug();
        flowed = session.listen(kSearchMs, kFlowMs);
    }
    if (!flowed)
        std::puts("FAILED: no stream after the fault");
    if (session.wasLost())
        std::puts("lost");
    std::printf("longest %lld ms\n", (long long)session.longestMs());
    return flowed;
}
} // namespace

int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const std::string fault = argv[1];
    int taken = 1;
    const auto application = test::applicationOffscreen(taken, argv);
    qInstallMessageHandler(onMessage);
    std::thread([] {}).join(); // with the first one a sanitizer begins one of its own
    const int threads = threadCount();
    if (!faulty::arm(fault)) {
        std::puts("FAILED: fault not understood");
        return 2;
    }
    bool good = runSessions();
    if (!threadsEnd(threads + faulty::threads())) {
        std::printf("FAILED: %d threads left\n", threadCount() - threads - faulty::threads());
        good = false;
    }
    for (const auto &[text, count] : g_warnings)
        std::printf("%u times: %s\n", count, qUtf8Printable(text));
    return good ? 0 : 1;
}
