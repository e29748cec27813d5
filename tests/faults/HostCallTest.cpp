// SPDX-License-Identifier: GPL-3.0-or-later
// The same faults under the headless host: it ends in time, with the right status, and says why.
#include "CallFaults.h"
#include "ProcessTable.h"

#include "host/HostProcess.h"

#include <QElapsedTimer>
#include <algorithm>
#include <gtest/gtest.h>

namespace
{
using test::HostProcess;

constexpr std::size_t kAtOnce = 8;
constexpr double kSeconds = 0.4; // of a run
constexpr int kBusyMachineMs = 6000;

struct Told
{
    Ending ending;
    int status;
    const char *text;
    int longestMs; // the start of program and stream included
};

// A search takes 3 s, five attempts at opening 0.5 s, a loss is noticed within 2 s, silence 5 s
// after the end of the run.
constexpr Told kTold[] = {
    {Ending::Fine, 0, "", 3000},
    {Ending::Missing, 1, "velmora-host: no receiver found\n", 4000},
    {Ending::Unopened, 1, "velmora-host: the receiver cannot be opened\n", 1500},
    {Ending::Unstarted, 1, "velmora-host: the receiver does not start its stream\n", 1500},
    {Ending::Lost, 1, "velmora-host: the receiver was lost\n", 3500},
    {Ending::Silent, 1, "velmora-host: the receiver is silent", 6500},
};
constexpr int kHangMs = 3000;

struct Run
{
    bool ended = false;
    int status = 0;
    QString errors;
    qint64 ms = 0;
};

Run run(const CallFault &fault)
{
    HostProcess host;
    QElapsedTimer clock;
    clock.start();
    host.run(QString("--seconds %1 --out a.wav --fault %2").arg(kSeconds).arg(fault.text));
    return {host.ended(), host.status(), host.errors(), clock.elapsed()};
}

const Told &told(const CallFault &fault, const Run &run)
{
    const bool isMissing =
        fault.ending == Ending::Missing || (fault.ending == Ending::Either && run.status != 0);
    const Ending ending = isMissing      ? Ending::Missing
        : fault.ending == Ending::Either ? Ending::Fine
                                         : fault.ending;
    return *std::find_if(std::begin(kTold), std::end(kTold),
        [ending](const Told &row) { return row.ending == ending; });
}

std::vector<CallFault> oneOfEachEnding(const std::vector<CallFault> &all)
{
    std::vector<CallFault> some;
    for (const CallFault &fault : all) {
        const auto isLike = [&fault](
                                const CallFault &other) { return fault.ending == other.ending; };
        if (std::none_of(some.begin(), some.end(), isLike))
            some.push_back(fault);
    }
    return some;
}
} // namespace

TEST(HostCallTest, EveryFaultEndsTheRunInTimeWithItsReason)
{
    auto faults = callFaults(true);
    if (!isWholeTableWanted())
        faults = oneOfEachEnding(faults);
    const auto runs = resultsOf(faults, kAtOnce, run);
    for (std::size_t i = 0; i < faults.size(); ++i) {
        const CallFault &fault = faults[i];
        const Told &expected = told(fault, runs[i]);
        SCOPED_TRACE(qPrintable(
            QString("%1: %2 ms\n%3").arg(fault.text).arg(runs[i].ms).arg(runs[i].errors)));
        EXPECT_TRUE(runs[i].ended);
        EXPECT_EQ(runs[i].status, expected.status);
        EXPECT_TRUE(runs[i].errors.contains(expected.text));
        EXPECT_LE(runs[i].ms, expected.longestMs + kBusyMachineMs + (fault.hangs ? kHangMs : 0));
    }
}
