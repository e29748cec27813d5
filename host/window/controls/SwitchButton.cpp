// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/SwitchButton.h"

#include "radio/Radio.h"
#include "settings/Language.h"

namespace host
{
SwitchButton::SwitchButton(Radio &radio, Switch id, QWidget *parent)
    : QToolButton(parent), m_radio(radio), m_id(id)
{
    setCheckable(true);
    setChecked(radio.isOn(id));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(this, &QToolButton::toggled, &radio, [this](bool on) { m_radio.setOn(m_id, on); });
    connect(&radio, &Radio::switchChanged, this, [this](Switch changed, bool on) {
        if (changed == m_id)
            setChecked(on);
    });
    connect(&radio, &Radio::modeChanged, this, &SwitchButton::enable);
    connect(&radio, &Radio::activeChanged, this, &SwitchButton::enable);
    say(this, [this] {
        setText(nameOf(m_id));
        setAccessibleName(nameOf(m_id));
        setAccessibleDescription(helpOf(m_id));
        enable();
    });
}

void SwitchButton::enable()
{
    const bool isUseful = m_radio.isUseful(m_id);
    setEnabled(isUseful);
    setToolTip(isUseful ? helpOf(m_id) : helpOf(m_id) + tr(" (no effect in this mode)"));
}
} // namespace host
