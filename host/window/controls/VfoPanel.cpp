// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/VfoPanel.h"

#include "window/controls/SwitchButton.h"
#include "window/controls/ToolPanel.h"
#include "window/frequency/FrequencyDisplay.h"

#include "radio/Radio.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

namespace host
{
namespace
{
QString stepText(int hertz)
{
    if (hertz >= 1000000)
        return QObject::tr("%1 MHz").arg(hertz / 1000000);
    if (hertz >= 1000)
        return QObject::tr("%1 kHz").arg(hertz / 1000.0);
    return QObject::tr("%1 Hz").arg(hertz);
}
} // namespace

VfoPanel::VfoPanel(Radio &radio, QWidget *parent)
    : QWidget(parent), m_radio(radio), m_a(new FrequencyDisplay(radio, VfoId::A, this)),
      m_b(new FrequencyDisplay(radio, VfoId::B, this)), m_split(new QToolButton(this)),
      m_lock(new QToolButton(this)), m_step(new QComboBox(this)), m_rit(new QSpinBox(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    auto *displays = new QHBoxLayout;
    displays->setSpacing(6);
    displays->addWidget(m_a, 1);
    displays->addWidget(m_b, 1);
    layout->addLayout(displays, 1);
    auto *row = new QHBoxLayout;
    row->setSpacing(4);
    layout->addLayout(row);
    const auto add = [&](const QString &text, const QString &help, auto &&onClick) {
        auto *button = new QToolButton(this);
        button->setText(text);
        button->setToolTip(help);
        button->setAccessibleName(help);
        button->setFocusPolicy(Qt::StrongFocus);
        connect(button, &QToolButton::clicked, this, onClick);
        row->addWidget(button);
    };
    add(tr("A⇄B"), tr("Frequency and mode of A and B change places"),
        [this] { m_radio.swapVfos(); });
    add(tr("A=B"), tr("The other VFO becomes as the active one"),
        [this] { m_radio.copyToOther(); });
    const auto addCheck = [&](QToolButton *button, const QString &text, const QString &help) {
        button->setText(text);
        button->setToolTip(help);
        button->setAccessibleName(help);
        button->setCheckable(true);
        button->setFocusPolicy(Qt::StrongFocus);
        row->addWidget(button);
    };
    addCheck(m_split, tr("Split"), tr("Hear both VFOs"));
    addCheck(m_lock, tr("Lock"), tr("Frequencies stay as they are"));
    row->addSpacing(6);
    row->addWidget(newHeading(tr("Step"), this));
    for (const int hertz : Radio::steps())
        m_step->addItem(stepText(hertz), hertz);
    m_step->setAccessibleName(tr("Tuning step"));
    row->addWidget(m_step);
    row->addSpacing(6);
    row->addWidget(new SwitchButton(radio, Switch::Rit, this));
    const auto range = radio.rangeOf(Dial::Rit);
    m_rit->setRange(int(range.low), int(range.high));
    m_rit->setSingleStep(10);
    m_rit->setSuffix(tr(" Hz"));
    m_rit->setAccessibleName(tr("RIT offset"));
    m_rit->setKeyboardTracking(false);
    row->addWidget(m_rit);
    row->addStretch(1);

    connect(m_split, &QToolButton::toggled, &radio, &Radio::setSplit);
    connect(m_lock, &QToolButton::toggled, &radio, &Radio::setLocked);
    connect(m_step, qOverload<int>(&QComboBox::activated), this,
        [this](int i) { m_radio.setStep(m_step->itemData(i).toInt()); });
    connect(m_rit, qOverload<int>(&QSpinBox::valueChanged), this,
        [this](int hertz) { m_radio.setValue(Dial::Rit, hertz); });
    connect(&radio, &Radio::splitChanged, this, &VfoPanel::showAll);
    connect(&radio, &Radio::lockedChanged, this, &VfoPanel::showAll);
    connect(&radio, &Radio::stepChanged, this, &VfoPanel::showAll);
    connect(&radio, &Radio::dialChanged, this, &VfoPanel::showAll);
    showAll();
}

void VfoPanel::editFrequency()
{
    (m_radio.active() == VfoId::A ? m_a : m_b)->edit();
}

void VfoPanel::showAll()
{
    m_split->setChecked(m_radio.isSplit());
    m_lock->setChecked(m_radio.isLocked());
    m_step->setCurrentIndex(m_step->findData(m_radio.step()));
    const QSignalBlocker quiet(m_rit);
    m_rit->setValue(int(m_radio.value(Dial::Rit)));
}
} // namespace host
