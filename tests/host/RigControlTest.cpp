// SPDX-License-Identifier: GPL-3.0-or-later
// A run that another program tunes.
#include "Tones.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <gtest/gtest.h>

namespace
{
constexpr int kWaitMs = 10000; // a busy machine

int freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

class Client
{
public:
    explicit Client(int port)
    {
        for (int ms = 0; ms < kWaitMs && m_socket.state() != QTcpSocket::ConnectedState; ms += 50) {
            m_socket.connectToHost(QHostAddress::LocalHost, quint16(port));
            if (!m_socket.waitForConnected(kWaitMs))
                QThread::msleep(50); // the program is not that far
        }
    }

    QByteArray ask(const QByteArray &line)
    {
        m_socket.write(line + '\n');
        while (!m_socket.canReadLine() && m_socket.waitForReadyRead(kWaitMs)) { }
        return m_socket.readAll();
    }

private:
    QTcpSocket m_socket;
};

TEST(RigControlTest, AnotherProgramTunesTheRun)
{
    const int port = freePort();
    test::HostProcess host;
    host.start(QString("--rate 48k --tune 7.1M --seconds 4 --out a.wav --rig-port %1").arg(port));
    Client client(port);
    EXPECT_EQ(client.ask("+f"), "get_freq:\nFrequency: 7100000\nRPRT 0\n");
    // Another band, and back to the carrier at 7.091 MHz.
    EXPECT_EQ(client.ask("F 14074000"), "RPRT 0\n");
    EXPECT_EQ(client.ask("M PKTUSB 2500"), "RPRT 0\n");
    EXPECT_EQ(client.ask(";f"), "get_freq:;Frequency: 14074000;RPRT 0\n");
    EXPECT_EQ(client.ask("F 7090000"), "RPRT 0\n");
    EXPECT_EQ(client.ask(";m"), "get_mode:;Mode: PKTUSB;Passband: 2500;RPRT 0\n");
    EXPECT_EQ(client.ask("M PKTUSB 99999"), "RPRT -1\n");
    EXPECT_EQ(client.ask("V VFOB"), "RPRT -11\n");
    host.wait();
    ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
    const auto audio = host.audio("a.wav");
    ASSERT_FALSE(audio.empty());
    const auto end = std::vector<COMPLEX>(audio.end() - 24000, audio.end());
    EXPECT_GT(test::levelAt(end, 1000.0), 10.0 * test::levelAt(end, 1500.0));
    EXPECT_GT(test::levelAt(end, 1000.0), 0.01);
}

TEST(RigControlTest, APortThatIsTakenEndsTheRunAndIsNamed)
{
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
    test::HostProcess host;
    host.run(QString("--seconds 1 --rig-port %1").arg(other.serverPort()));
    EXPECT_EQ(host.status(), 1);
    EXPECT_TRUE(host.errors().contains(QString::number(other.serverPort())));
}
} // namespace
