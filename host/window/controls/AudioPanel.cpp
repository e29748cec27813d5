// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/AudioPanel.h"

#include "window/controls/DialSlider.h"
#include "window/controls/SwitchButton.h"
#include "window/controls/ToolPanel.h"

#include "radio/Radio.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace host
{
AudioPanel::AudioPanel(Radio &radio, QWidget *parent) : QWidget(parent)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(newHeading(QT_TRANSLATE_NOOP("host::ToolPanel", "Sound"), this));
    auto *row = new QHBoxLayout;
    row->setSpacing(4);
    row->addWidget(new DialSlider(radio, Dial::Volume, this), 1);
    auto *mute = new SwitchButton(radio, Switch::Mute, this);
    mute->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    row->addWidget(mute);
    layout->addLayout(row);
    layout->addWidget(new DialSlider(radio, Dial::Balance, this));
    layout->addWidget(new DialSlider(radio, Dial::VolumeA, this));
    layout->addWidget(new DialSlider(radio, Dial::VolumeB, this));
}
} // namespace host
