// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/VfoPanel.h"

#include "window/controls/SwitchButton.h"
#include "window/controls/ToolPanel.h"
#include "window/frequency/FrequencyDisplay.h"

#include "radio/Radio.h"
#include "settings/Language.h"

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
        return VfoPanel::tr("%1 MHz").arg(hertz / 1000000);
    if (hertz >= 1000)
        return VfoPanel::tr("%1 kHz").arg(QLocale().toString(hertz / 1000.0));
    return VfoPanel::tr("%1 Hz").arg(hertz);
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
    const auto add = [&](QToolButton *button, const char *text, const char *help) {
        say(button, [button, text, help] {
            button->setText(tr(text));
            button->setToolTip(tr(help));
            button->setAccessibleName(tr(help));
        });
        button->setFocusPolicy(Qt::StrongFocus);
        row->addWidget(button);
    };
    auto *swap = new QToolButton(this);
    add(swap, QT_TR_NOOP("A⇄B"), QT_TR_NOOP("Frequency and mode of A and B change places"));
    connect(swap, &QToolButton::clicked, this, [this] { m_radio.swapVfos(); });
    auto *copy = new QToolButton(this);
    add(copy, QT_TR_NOOP("A=B"), QT_TR_NOOP("The other VFO becomes as the active one"));
    connect(copy, &QToolButton::clicked, this, [this] { m_radio.copyToOther(); });
    add(m_split, QT_TR_NOOP("Split"), QT_TR_NOOP("Hear both VFOs"));
    add(m_lock, QT_TR_NOOP("Lock"), QT_TR_NOOP("Frequencies stay as they are"));
    for (QToolButton *button : {m_split, m_lock})
        button->setCheckable(true);
    row->addSpacing(6);
    row->addWidget(newHeading(QT_TRANSLATE_NOOP("host::ToolPanel", "Step"), this));
    for (const int hertz : Radio::steps())
        m_step->addItem({}, hertz);
    row->addWidget(m_step);
    row->addSpacing(6);
    row->addWidget(new SwitchButton(radio, Switch::Rit, this));
    const auto range = radio.rangeOf(Dial::Rit);
    m_rit->setRange(int(range.low), int(range.high));
    m_rit->setSingleStep(10);
    say(this, [this] {
        m_step->setAccessibleName(tr("Tuning step"));
        for (int i = 0; i < m_step->count(); ++i)
            m_step->setItemText(i, stepText(m_step->itemData(i).toInt()));
        m_rit->setSuffix(tr(" Hz"));
        m_rit->setAccessibleName(tr("RIT offset"));
    });
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
