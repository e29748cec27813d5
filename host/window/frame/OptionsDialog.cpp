// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frame/OptionsDialog.h"

#include "radio/Radio.h"
#include "settings/Language.h"

#include <QDialogButtonBox>
#include <QScrollArea>
#include <QVBoxLayout>

namespace host
{
OptionsDialog::OptionsDialog(Radio &radio, QWidget *parent) : QDialog(parent), m_radio(radio)
{
    say(this, [this] { setWindowTitle(tr("Options of %1").arg(m_radio.deviceName())); });
    auto *layout = new QVBoxLayout(this);
    auto *area = new QScrollArea(this);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus); // its controls scroll it when they are reached
    area->setWidget(&radio.optionsPage());
    radio.optionsPage().show();
    layout->addWidget(area, 1);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    resize(radio.optionsPage().sizeHint().expandedTo({520, 420}) + QSize(60, 80));
}

OptionsDialog::~OptionsDialog()
{
    // The area would delete it.
    if (auto *area = findChild<QScrollArea *>())
        area->takeWidget();
    m_radio.optionsPage().setParent(nullptr);
}
} // namespace host
