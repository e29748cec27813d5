// SPDX-License-Identifier: GPL-3.0-or-later
#include "rig/RigConnection.h"

#include <QTcpSocket>

namespace host
{
namespace
{
constexpr int kReadBuffer = 4096; // bytes; the rest waits in the client

const QByteArray kInvalid = "RPRT -1\n";
} // namespace

RigConnection::RigConnection(std::unique_ptr<QTcpSocket> socket, RigTarget &target)
    : m_socket(std::move(socket)), m_session(target)
{
    m_socket->setReadBufferSize(kReadBuffer);
    // Commands are short and each waits for its answer.
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    // Finds out that a client has gone without a word.
    m_socket->setSocketOption(QAbstractSocket::KeepAliveOption, 1);
    m_turn.setSingleShot(true);
    m_turn.setInterval(kTurnMs);
    connect(&m_turn, &QTimer::timeout, this, &RigConnection::read);
    connect(m_socket.get(), &QTcpSocket::disconnected, this, &RigConnection::closed);
    connect(m_socket.get(), &QTcpSocket::readyRead, this, [this] {
        if (!m_turn.isActive())
            read();
    });
    connect(m_socket.get(), &QTcpSocket::bytesWritten, this, [this] {
        if (!m_turn.isActive() && isLineReady())
            m_turn.start();
    });
}

RigConnection::~RigConnection()
{
    m_socket->disconnect(this);
}

bool RigConnection::isLineReady() const
{
    return m_socket->bytesAvailable() >= kLongestLine || m_socket->canReadLine();
}

void RigConnection::read()
{
    for (int lines = 0; lines < kLinesPerTurn; ++lines) {
        if (m_isEnding || m_socket->bytesToWrite() > kMostUnread || !isLineReady())
            return;
        const QByteArray line = m_socket->readLine(kLongestLine);
        if (!line.endsWith('\n'))
            return end(kInvalid);
        m_socket->write(m_session.answer(line.chopped(1)));
        m_socket->flush(); // if the client has hung up, the socket closes at its next event
        if (m_session.isOver())
            return end();
    }
    m_turn.start();
}

/// What was answered still reaches the client.
void RigConnection::end(const QByteArray &lastWords)
{
    m_isEnding = true;
    m_socket->write(lastWords);
    m_socket->disconnectFromHost();
    QTimer::singleShot(kPartingMs, m_socket.get(), &QTcpSocket::abort);
}
} // namespace host
