// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rig/RigSession.h"

#include <QObject>
#include <QTimer>

#include <memory>

class QTcpSocket;

namespace host
{
/// A client of the rig server: its socket, and the lines that go to and fro.
///
/// Whatever comes in costs the GUI thread little: so many lines a turn of the event loop, then the
/// others have theirs; an unread answer stops the reading, and so the client by the network's own
/// flow control; a line without an end is refused and the client let go.
class RigConnection : public QObject
{
    Q_OBJECT

public:
    static constexpr int kLongestLine = 512; ///< bytes; the longest command has some 40
    static constexpr int kLinesPerTurn = 16;
    static constexpr int kTurnMs =
        10; ///< between turns while there is more: 1600 commands a second

    /// Half a second of the talk of the busiest client; whoever reads so little is not listening.
    static constexpr qint64 kMostUnread = 64 * 1024;

    static constexpr int kPartingMs = 5000; ///< for a client that does not read its last answer

    /// Takes the socket; target must outlive the connection.
    RigConnection(std::unique_ptr<QTcpSocket> socket, RigTarget &target);
    ~RigConnection() override;

signals:
    /// The client is gone; once.
    void closed();

private:
    void read();
    void end(const QByteArray &lastWords = {});
    bool isLineReady() const;

    std::unique_ptr<QTcpSocket> m_socket;
    RigSession m_session;
    QTimer m_turn;
    bool m_isEnding = false;
};
} // namespace host
