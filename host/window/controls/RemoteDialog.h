// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QCheckBox;
class QLabel;
class QSpinBox;

namespace host
{
class RigServer;

/// Rig control by other programs: on or off, its port, and who is there. GUI thread.
class RemoteDialog : public QDialog
{
    Q_OBJECT

public:
    static constexpr int kLeastPort = 1024; ///< below only an administrator may listen
    static constexpr int kMostPort = 65535;

    /// The server must outlive the dialog.
    RemoteDialog(const RigServer &server, int port, QWidget *parent = nullptr);

signals:
    /// What a person asks for; the server tells what came of it.
    void wanted(bool on, int port);

private:
    void showState();

    const RigServer &m_server;
    QCheckBox *m_on; // children
    QSpinBox *m_port;
    QLabel *m_state;
};
} // namespace host
