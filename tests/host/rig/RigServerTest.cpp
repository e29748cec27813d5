// SPDX-License-Identifier: GPL-3.0-or-later
#include "rig/FakeRig.h"

#include "rig/RigServer.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTcpSocket>
#include <QTest>

#include <gtest/gtest.h>

#include <sys/socket.h>

namespace
{
constexpr int kWaitMs = 5000; // a busy machine

class RigServerTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(server.open(0)) << server.error().toStdString(); }

    std::unique_ptr<QTcpSocket> client()
    {
        auto socket = std::make_unique<QTcpSocket>();
        socket->connectToHost(QHostAddress::LocalHost, server.port());
        EXPECT_TRUE(QTest::qWaitFor([&] { return isConnected(*socket); }, kWaitMs));
        return socket;
    }

    static bool isConnected(const QTcpSocket &socket)
    {
        return socket.state() == QTcpSocket::ConnectedState;
    }

    /// What comes until it ends so, or the client is let go.
    static QByteArray heard(QTcpSocket &socket, const QByteArray &end = "\n")
    {
        QByteArray text;
        const auto isOver = [&] {
            text += socket.readAll();
            return text.endsWith(end) || !isConnected(socket);
        };
        EXPECT_TRUE(QTest::qWaitFor(isOver, kWaitMs)) << "silence";
        return text + socket.readAll();
    }

    static QByteArray ask(QTcpSocket &socket, const QByteArray &line)
    {
        socket.write(line);
        return heard(socket);
    }

    test::FakeRig rig;
    host::RigServer server{rig};
};

TEST_F(RigServerTest, TakesLinesHoweverTheyAreCut)
{
    const auto slow = client();
    for (const char letter : QByteArray("F 7090000")) {
        slow->write(&letter, 1);
        QTest::qWait(5);
    }
    const auto other = client();
    EXPECT_EQ(ask(*other, "f\n"), "7105000\n") << "half a line keeps nobody waiting";
    EXPECT_EQ(ask(*slow, "\n"), "RPRT 0\n");
    slow->write("f\nv\n\n\nf\n");
    EXPECT_EQ(heard(*slow, "7090000\nVFOA\n7090000\n"), "7090000\nVFOA\n7090000\n");
}

// As "echo f | nc -N localhost 4532" does.
TEST_F(RigServerTest, AnswersAClientThatHasNothingMoreToSay)
{
    for (const char *line : {"f\n", "f\nq\n"}) {
        const auto socket = client();
        socket->write(line);
        socket->flush();
        shutdown(int(socket->socketDescriptor()), SHUT_WR);
        EXPECT_EQ(heard(*socket).left(8), "7105000\n") << line;
        EXPECT_TRUE(QTest::qWaitFor([&] { return server.clientCount() == 0; }, kWaitMs));
    }
}

TEST_F(RigServerTest, LetsGoOfALineWithoutAnEnd)
{
    for (const QByteArray &flood :
        {QByteArray(1 << 20, 'f'), QByteArray(1 << 20, '\0'), QByteArray(1 << 20, '\xff')}) {
        const auto socket = client();
        socket->write(flood);
        EXPECT_EQ(heard(*socket), "RPRT -1\n");
        EXPECT_TRUE(QTest::qWaitFor([&] { return server.clientCount() == 0; }, kWaitMs));
    }
}

TEST_F(RigServerTest, AFloodOfCommandsLeavesTheOthersTheirTurn)
{
    const auto deaf = client();
    deaf->setReadBufferSize(1);
    deaf->write(QByteArray("\\dump_state\n").repeated(20000));
    const auto loud = client();
    loud->write(QByteArray("f\n").repeated(20000));
    const auto polite = client();
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(ask(*polite, "f\n"), "7105000\n");
    EXPECT_LT(clock.elapsed(), kWaitMs);
}

TEST_F(RigServerTest, TellsTheNinthClient)
{
    QSignalSpy counts(&server, &host::RigServer::clientCountChanged);
    std::vector<std::unique_ptr<QTcpSocket>> clients;
    for (int i = 0; i < host::RigServer::kMostClients; ++i)
        clients.push_back(client());
    const auto ninth = client();
    EXPECT_EQ(heard(*ninth), "RPRT -9\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isConnected(*ninth); }, kWaitMs));
    EXPECT_EQ(ask(*clients.back(), "f\n"), "7105000\n");
    clients.front()->abort();
    EXPECT_TRUE(QTest::qWaitFor([&] { return server.clientCount() == 7; }, kWaitMs));
    const auto tenth = client();
    EXPECT_EQ(ask(*tenth, "f\n"), "7105000\n");
    server.close();
    EXPECT_EQ(counts.last().first().toInt(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isConnected(*tenth); }, kWaitMs));
}

TEST_F(RigServerTest, TellsWhenThePortIsTaken)
{
    host::RigServer second(rig);
    EXPECT_FALSE(second.open(server.port()));
    EXPECT_TRUE(second.error().contains(QString::number(server.port())));
}

/// hamlib's own client, as its users run it.
TEST_F(RigServerTest, WorksWithRigctl)
{
    if (QStandardPaths::findExecutable("rigctl").isEmpty())
        GTEST_SKIP() << "rigctl is not installed (Debian package libhamlib-utils)";
    const std::vector<std::pair<QStringList, QByteArray>> transcript = {
        {{"f"}, "7105000\n"},
        {{"F", "14074000", "f"}, "14074000\n"},
        {{"M", "PKTUSB", "3000", "m"}, "PKTUSB\n3000\n"},
        {{"M", "CW", "0"}, ""},
        {{"m"}, "CW\n2400\n"},
        {{"v"}, "VFOA\n"},
        {{"V", "VFOB", "f"}, "7096000\n"},
        {{"V", "VFOA"}, ""},
        {{"S", "1", "VFOB", "s"}, "1\nVFOB\n"},
        {{"S", "0", "VFOA", "s"}, "0\nVFOA\n"},
        {{"l", "STRENGTH"}, "-13\n"},
        {{"L", "ATT", "20", "l", "ATT"}, "20\n"},
        {{"U", "NR", "1", "u", "NR"}, "1\n"},
        {{"J", "100", "j"}, "100\n"},
        {{"t"}, "0\n"},
    };
    rig.dbm = -86.0;
    const QString address = QString("127.0.0.1:%1").arg(server.port());
    for (const auto &[command, answer] : transcript) {
        QProcess process;
        process.start("rigctl", QStringList{"-m", "2", "-r", address} + command);
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 4 * kWaitMs));
        EXPECT_EQ(process.readAllStandardOutput(), answer) << command.join(' ').toStdString();
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    }
    EXPECT_EQ(rig.vfos[0].frequencyHz, 14074000.0);
    EXPECT_TRUE(rig.switches[std::size_t(host::Switch::Nr)]);
}
} // namespace
