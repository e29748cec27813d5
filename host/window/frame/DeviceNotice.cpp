// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frame/DeviceNotice.h"

#include "library/DeviceKind.h"
#include "radio/Radio.h"
#include "settings/Language.h"

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
    layout->addWidget(m_text, 1);
    m_virtual->setFocusPolicy(Qt::StrongFocus);
    connect(m_virtual, &QToolButton::clicked, this,
        [this] { m_radio.setDeviceKind(&deviceKinds().front()); });
    layout->addWidget(m_virtual);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    say(this, [this] {
        m_text->setAccessibleName(tr("No receiver"));
        m_virtual->setText(tr("Listen to the virtual receiver"));
        m_virtual->setAccessibleName(m_virtual->text());
    });
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
