// SPDX-License-Identifier: GPL-3.0-or-later
// A signal ends the headless host within 2 s, whatever it is waiting for, and what is in its files
// by then can be used.
#include "ProcessTable.h"

#include "host/HostProcess.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QThread>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/stat.h>

namespace
{
using test::HostProcess;

constexpr std::size_t kAtOnce = 5;
constexpr int kLimitMs = 2000;
constexpr int kBusyMachineMs = 4000; // what hangs, hangs for 30 s

constexpr char kForced[] = "velmora-host: the receiver or a file does not answer; what was not "
                           "written yet is lost\n";
constexpr char kUnopened[] = "velmora-host: interrupted before the receiver was open\n";

struct State
{
    const char *name;
    const char *options;
    int signal;
    double audioSeconds; // that must be in the file before the signal
    int status;
    const char *errors;
    bool hasReport;
    bool doesHang = false; // while it streams
};

const std::vector<State> kStates = {
    {"streams", "", SIGINT, 0.2, 0, "", true},
    {"streams, terminated", "", SIGTERM, 0.2, 0, "", true},
    {"streams, terminal gone", "", SIGHUP, 0.2, 0, "", true},
    {"free run", "--free-run", SIGINT, 0.2, 0, "", true},
    {"searches", "--fault fail:FT_ListDevices", SIGINT, 0.0, 1, kUnopened, false},
    {"opening hangs", "--fault hang:FT_Open=30", SIGINT, 0.0, 1, kForced, false},
    {"silent from the start", "--fault silence@0..1000", SIGINT, 0.0, 0, "", true},
    {"silent", "--fault silence@0.5..1000", SIGINT, 0.2, 0, "", true},
    {"a read hangs", "--fault hang:FT_Read@100=30", SIGINT, 0.2, 1, kForced, false, true},
    {"a command hangs", "--fault hang:FT_Write@45=30", SIGHUP, 0.1, 1, kForced, false},
    {"closing hangs", "--fault hang:FT_Close=30", SIGINT, 0.2, 1, kForced, true},
    {"nobody reads", "--vac-out pipe", SIGINT, 0.0, 1, kForced, false},
};

struct Run
{
    bool ended = false;
    int status = 0;
    QString errors;
    qint64 ms = 0;
    bool hasReport = false;
    double audioSeconds = 0.0;
};

constexpr double kRateHz = 48000.0;
constexpr int kSettledMs = 250; // for a call that hangs after the audio
constexpr int kOpenMs = 1500;   // from the file to the first read, well within a search
constexpr qint64 kFrameBytes = 8;

void waitForAudio(const HostProcess &host, double seconds)
{
    const QString file = host.path("a.wav");
    for (int i = 0; i < 3000 && !QFileInfo::exists(file); ++i)
        QThread::msleep(10);
    const auto bytes = qint64(seconds * kRateHz) * kFrameBytes;
    for (int i = 0; i < 3000 && QFileInfo(file).size() < bytes; ++i)
        QThread::msleep(10);
    QThread::msleep(bytes > 0 ? kSettledMs : kOpenMs);
}

/// What hangs, does so when nothing more comes into the file.
void waitForHang(const HostProcess &host)
{
    const QString file = host.path("a.wav");
    qint64 before = -1;
    for (int i = 0; i < 100 && QFileInfo(file).size() != before; ++i) {
        before = QFileInfo(file).size();
        QThread::msleep(kSettledMs);
    }
}

Run run(const State &state)
{
    HostProcess host;
    mkfifo(qPrintable(host.path("pipe")), 0600);
    host.start(QString("--seconds 600 --out a.wav --report r.json ") + state.options);
    waitForAudio(host, state.audioSeconds);
    if (state.doesHang)
        waitForHang(host);
    QElapsedTimer clock;
    clock.start();
    kill(pid_t(host.id()), state.signal);
    host.wait();
    return {host.ended(), host.status(), host.errors(), clock.elapsed(),
        QFileInfo::exists(host.path("r.json")), double(host.audio("a.wav").size()) / kRateHz};
}
} // namespace

TEST(SignalTest, EndsTheHostInEveryState)
{
    const auto runs = resultsOf(kStates, kAtOnce, run);
    for (std::size_t i = 0; i < kStates.size(); ++i) {
        const State &state = kStates[i];
        SCOPED_TRACE(state.name + (": " + std::to_string(runs[i].ms)) + " ms");
        EXPECT_TRUE(runs[i].ended);
        EXPECT_EQ(runs[i].status, state.status);
        EXPECT_EQ(runs[i].errors.toStdString(), state.errors);
        EXPECT_LT(runs[i].ms, kLimitMs + kBusyMachineMs);
        EXPECT_EQ(runs[i].hasReport, state.hasReport);
        // Of a program that was ended by force the header is up to a second behind.
        EXPECT_GE(runs[i].audioSeconds, state.hasReport ? state.audioSeconds : 0.0);
    }
}

TEST(SignalTest, SecondEndsTheHostAsUsual)
{
    HostProcess host;
    host.start("--seconds 600 --out a.wav --fault hang:FT_Open=30");
    waitForAudio(host, 0.0);
    for (int i = 0; i < 2; ++i) {
        kill(pid_t(host.id()), SIGINT);
        QThread::msleep(kSettledMs);
    }
    host.wait();
    EXPECT_FALSE(host.ended());
    EXPECT_EQ(host.status(), SIGINT);
    EXPECT_EQ(host.errors().toStdString(), ""); // before its patience was at an end
}
