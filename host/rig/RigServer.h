// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rig/RigConnection.h"

#include <QObject>
#include <QTcpServer>

#include <memory>
#include <vector>

namespace host
{
/// Remote control by the protocol of hamlib's rigctld, for programs on the same computer: those
/// that log, show bands and decode data, set to "Hamlib NET rigctl" with localhost:4532.
///
/// GUI thread.
class RigServer : public QObject
{
    Q_OBJECT

public:
    static constexpr quint16 kUsualPort = 4532;
    static constexpr int kMostClients = 8;

    /// target must outlive the server.
    explicit RigServer(RigTarget &target);
    ~RigServer() override;

    /// Listens on the loopback address; port 0 chooses a free one. False: error() tells why in one
    /// line.
    bool open(quint16 port = kUsualPort);
    bool isOpen() const { return m_server.isListening(); }
    quint16 port() const { return m_server.serverPort(); }
    const QString &error() const { return m_error; } ///< until the next open() or close()

    /// Lets all clients go.
    void close();

    int clientCount() const { return int(m_clients.size()); }

signals:
    void openChanged(bool isOpen);
    void clientCountChanged(int clients);

private:
    void takeClients();
    void remove(const RigConnection *client);

    RigTarget &m_target;
    QTcpServer m_server;
    QString m_error;
    std::vector<std::unique_ptr<RigConnection>> m_clients;
};
} // namespace host
