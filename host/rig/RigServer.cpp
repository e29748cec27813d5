// SPDX-License-Identifier: GPL-3.0-or-later
#include "rig/RigServer.h"

#include <QTcpSocket>

#include <algorithm>

namespace host
{
namespace
{
const QByteArray kFull = "RPRT -9\n"; // refused
} // namespace

RigServer::RigServer(RigTarget &target) : m_target(target)
{
    connect(&m_server, &QTcpServer::newConnection, this, &RigServer::takeClients);
}

RigServer::~RigServer() = default;

bool RigServer::open(quint16 port)
{
    close();
    if (m_server.listen(QHostAddress::LocalHost, port)) {
        emit openChanged(true);
        return true;
    }
    m_error = tr("Rig control cannot use port %1: %2").arg(port).arg(m_server.errorString());
    return false;
}

void RigServer::close()
{
    m_error.clear();
    const bool wasOpen = isOpen();
    m_server.close();
    if (!m_clients.empty()) {
        m_clients.clear();
        emit clientCountChanged(0);
    }
    if (wasOpen)
        emit openChanged(false);
}

void RigServer::takeClients()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        if (clientCount() == kMostClients) {
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            socket->write(kFull);
            socket->disconnectFromHost();
            QTimer::singleShot(RigConnection::kPartingMs, socket, &QTcpSocket::abort);
            continue;
        }
        socket->setParent(nullptr);
        m_clients.push_back(
            std::make_unique<RigConnection>(std::unique_ptr<QTcpSocket>(socket), m_target));
        const RigConnection *client = m_clients.back().get();
        // The client is in the middle of its signal.
        connect(
            client, &RigConnection::closed, this, [this, client] { remove(client); },
            Qt::QueuedConnection);
        emit clientCountChanged(clientCount());
    }
}

void RigServer::remove(const RigConnection *client)
{
    const auto isIt = [client](const auto &other) { return other.get() == client; };
    if (std::erase_if(m_clients, isIt))
        emit clientCountChanged(clientCount());
}
} // namespace host
