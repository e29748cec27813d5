// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/ToolPanel.h"

#include "window/controls/ChoiceGrid.h"
#include "window/controls/DialSlider.h"
#include "window/controls/SwitchButton.h"

#include "radio/Radio.h"
#include "settings/Language.h"

#include "DspCore/audio/CtcssTones.h"
#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace host
{
namespace
{
constexpr int kColumns = 4;
} // namespace

QLabel *newHeading(const char *text, QWidget *parent)
{
    auto *label = new QLabel(parent);
    say(label, [label, text] { label->setText(ToolPanel::tr(text)); });
    label->setProperty("role", "heading");
    return label;
}

ToolPanel::ToolPanel(Radio &radio, QWidget *parent) : QWidget(parent), m_radio(radio)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    addAgc(*layout);
    layout->addSpacing(4);
    addTools(*layout);
    layout->addSpacing(4);
    addSquelch(*layout);
    connect(&radio, &Radio::agcModeChanged, this, &ToolPanel::showAgc);
    connect(&radio, &Radio::modeChanged, this, &ToolPanel::showAgc);
    connect(&radio, &Radio::activeChanged, this, &ToolPanel::showAgc);
    connect(&radio, &Radio::dialChanged, this, &ToolPanel::showTone);
    showAgc();
    showTone();
}

void ToolPanel::addAgc(QVBoxLayout &layout)
{
    layout.addWidget(newHeading(QT_TR_NOOP("Gain"), this));
    const auto names = m_radio.functions().listAgc();
    m_agc = new ChoiceGrid(QT_TRANSLATE_NOOP("ChoiceGrid", "AGC"), names.size(), this);
    m_agc->setTexts(QStringList(names));
    layout.addWidget(m_agc);
    layout.addWidget(new DialSlider(m_radio, Dial::AgcGain, this));
    auto *row = new QHBoxLayout;
    row->setSpacing(4);
    row->addWidget(new DialSlider(m_radio, Dial::Preamp, this), 1);
    auto *automatic = new SwitchButton(m_radio, Switch::AutoPreamp, this);
    automatic->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    row->addWidget(automatic);
    layout.addLayout(row);
    connect(m_agc, &ChoiceGrid::clicked, this, [this](int agc) { m_radio.setAgcMode(agc); });
}

void ToolPanel::addTools(QVBoxLayout &layout)
{
    layout.addWidget(newHeading(QT_TR_NOOP("Tools"), this));
    auto *grid = new QGridLayout;
    grid->setSpacing(3);
    const Switch tools[] = {Switch::Nb1, Switch::Nb2, Switch::Nr, Switch::Anf, Switch::Apf,
        Switch::Dse, Switch::Binaural, Switch::Stereo};
    int place = 0;
    for (const Switch id : tools) {
        grid->addWidget(new SwitchButton(m_radio, id, this), place / kColumns, place % kColumns);
        ++place;
    }
    auto *equalizer = new SwitchButton(m_radio, Switch::Equalizer, this);
    grid->addWidget(equalizer, place / kColumns, place % kColumns);
    ++place;
    const auto addOpener = [&](const char *text, const char *help, auto signal, int width) {
        auto *button = new QToolButton(this);
        say(button, [button, text, help] {
            button->setText(tr(text));
            button->setToolTip(tr(help));
            button->setAccessibleName(tr(help));
        });
        button->setFocusPolicy(Qt::StrongFocus);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        grid->addWidget(button, place / kColumns, place % kColumns, 1, width);
        place += width;
        connect(button, &QToolButton::clicked, this, signal);
    };
    addOpener(
        QT_TR_NOOP("EQ…"), QT_TR_NOOP("Sliders of the equalizer"), &ToolPanel::equalizerWanted, 1);
    addOpener(
        QT_TR_NOOP("Notches…"), QT_TR_NOOP("List of notch filters"), &ToolPanel::notchesWanted, 2);
    for (int column = 0; column < kColumns; ++column)
        grid->setColumnStretch(column, 1);
    layout.addLayout(grid);
}

void ToolPanel::addSquelch(QVBoxLayout &layout)
{
    layout.addWidget(newHeading(QT_TR_NOOP("Squelch"), this));
    auto *row = new QHBoxLayout;
    row->setSpacing(4);
    auto *on = new SwitchButton(m_radio, Switch::Squelch, this);
    on->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    row->addWidget(on);
    row->addWidget(new DialSlider(m_radio, Dial::Squelch, this), 1);
    layout.addLayout(row);
    auto *tones = new QHBoxLayout;
    tones->setSpacing(4);
    auto *ctcss = new SwitchButton(m_radio, Switch::Ctcss, this);
    ctcss->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    tones->addWidget(ctcss);
    m_tone = new QComboBox(this);
    for (std::size_t i = 0; i < Velmora::CTCSS.size(); ++i)
        m_tone->addItem({});
    say(m_tone, [this] {
        m_tone->setAccessibleName(tr("Squelch tone"));
        for (std::size_t i = 0; i < Velmora::CTCSS.size(); ++i)
            m_tone->setItemText(int(i), tr("%1 Hz").arg(numberText(double(Velmora::CTCSS[i]), 1)));
    });
    tones->addWidget(m_tone, 1);
    layout.addLayout(tones);
    connect(m_tone, qOverload<int>(&QComboBox::activated), this,
        [this](int tone) { m_radio.setValue(Dial::CtcssTone, tone); });
}

void ToolPanel::showAgc()
{
    m_agc->setChosen(m_radio.agcMode());
    m_agc->setEnabled(m_radio.isUseful(Dial::AgcGain));
    m_tone->setEnabled(m_radio.isUseful(Dial::CtcssTone));
}

void ToolPanel::showTone()
{
    m_tone->setCurrentIndex(int(m_radio.value(Dial::CtcssTone)));
}
} // namespace host
