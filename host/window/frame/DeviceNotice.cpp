// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frame/DeviceNotice.h"

#include "library/DeviceKind.h"
#include "radio/Radio.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace host
{
DeviceNotice::DeviceNotice(Radio &radio, QWidget *parent)
    : QWidget(parent), m_radio(radio), m_text(new QLabel(this)), m_virtual(new QToolButton(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 4, 4);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse); // it may name files and commands
    m_text->setAccessibleName(tr("No receiver"));
    layout->addWidget(m_text, 1);
    m_virtual->setText(tr("Listen to the virtual receiver"));
    connect(m_virtual, &QToolButton::clicked, this,
        [this] { m_radio.setDeviceKind(&deviceKinds().front()); });
    layout->addWidget(m_virtual);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    connect(&radio, &Radio::searchChanged, this, &DeviceNotice::showText);
    showText();
}

void DeviceNotice::showText()
{
    const QString &text = m_radio.searchText();
    m_text->setText(text);
    m_virtual->setVisible(!m_radio.virtualReceiver());
    setVisible(!text.isEmpty());
}
} // namespace host
