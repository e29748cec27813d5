// SPDX-License-Identifier: GPL-3.0-or-later
// Each call of the device's library goes wrong in each way under the loaded plugin. It survives,
// says what it has to say, holds nobody up for longer than the call itself, leaves no thread, and
// when the fault is over there is a stream.
#include "CallFaults.h"
#include "ProcessTable.h"

#include <QProcess>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace
{
constexpr std::size_t kAtOnce = 10;

// What a call of the plugin may take: the read under way (0.2 s), the pause of a change of rate.
constexpr int kStatedMs = 400;
constexpr int kHangMs = 3000;
constexpr int kBusyMachineMs = 2000;

struct Session
{
    bool ended = false;
    int status = 0;
    QString output;
};

Session run(const char *program, const QString &fault)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, {fault});
    process.waitForFinished(60000);
    return {process.exitStatus() == QProcess::NormalExit, process.exitCode(),
        QString::fromLocal8Bit(process.readAll())};
}

/// The number after a text; 0 without it.
int numberAfter(const QString &text, const Session &session)
{
    const auto match = QRegularExpression(text + " (\\d+)").match(session.output);
    return match.hasMatch() ? match.captured(1).toInt() : 0;
}
} // namespace

TEST(PluginCallTest, EveryFaultIsSurvivedAndToldAndEnds)
{
    const auto faults = callFaults(isWholeTableWanted());
    const auto sessions = resultsOf(
        faults, kAtOnce, [](const CallFault &fault) { return run(FAULT_SESSION, fault.text); });
    for (std::size_t i = 0; i < faults.size(); ++i) {
        const CallFault &fault = faults[i];
        const Session &session = sessions[i];
        SCOPED_TRACE(qPrintable(fault.text + "\n" + session.output));
        EXPECT_TRUE(session.ended);
        EXPECT_EQ(session.status, 0);
        EXPECT_GE(numberAfter("struck at call", session), int(fault.call));
        EXPECT_LE(numberAfter("longest", session),
            kStatedMs + kBusyMachineMs + (fault.hangs ? kHangMs : 0));
        EXPECT_EQ(session.output.contains("replugged"), fault.keepsHandle);
        EXPECT_EQ(session.output.contains("lost"), fault.ending == Ending::Lost);
        EXPECT_TRUE(!fault.warning || session.output.contains(fault.warning));
    }
}
