// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/RemoteDialog.h"

#include "rig/RigServer.h"
#include "settings/Language.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

namespace host
{
RemoteDialog::RemoteDialog(const RigServer &server, int port, QWidget *parent)
    : QDialog(parent), m_server(server), m_on(new QCheckBox(this)), m_port(new QSpinBox(this)),
      m_state(new QLabel(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_on);
    auto *form = new QFormLayout;
    m_port->setRange(kLeastPort, kMostPort);
    m_port->setValue(port);
    m_port->setKeyboardTracking(false); // half a number is another port
    auto *label = new QLabel(this);
    label->setBuddy(m_port);
    form->addRow(label, m_port);
    layout->addLayout(form);
    m_state->setWordWrap(true);
    layout->addWidget(m_state);
    auto *hint = new QLabel(this);
    hint->setWordWrap(true);
    layout->addWidget(hint);
    layout->addStretch(1);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_on, &QCheckBox::clicked, this, [this](bool on) {
        emit wanted(on, m_port->value());
        showState();
    });
    connect(m_port, qOverload<int>(&QSpinBox::valueChanged), this, [this](int chosen) {
        emit wanted(m_on->isChecked(), chosen);
        showState();
    });
    connect(&server, &RigServer::openChanged, this, &RemoteDialog::showState);
    connect(&server, &RigServer::clientCountChanged, this, &RemoteDialog::showState);
    say(this, [this, label, hint] {
        setWindowTitle(tr("Remote control"));
        m_on->setText(tr("&Other programs on this computer may tune the receiver"));
        label->setText(tr("&Port"));
        m_port->setAccessibleName(tr("Port"));
        hint->setText(tr("In the other program choose \"Hamlib NET rigctl\" (model 2) and "
                         "localhost with this port."));
        showState();
    });
}

void RemoteDialog::showState()
{
    const bool isOpen = m_server.isOpen();
    m_on->setChecked(isOpen);
    m_state->setText(isOpen ? tr("Listening on localhost:%1, %2 of %3 programs connected.")
                                  .arg(m_server.port())
                                  .arg(m_server.clientCount())
                                  .arg(RigServer::kMostClients)
            : m_server.error().isEmpty() ? tr("Off.")
                                         : m_server.error());
}
} // namespace host
