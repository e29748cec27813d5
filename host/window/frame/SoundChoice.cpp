// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frame/SoundChoice.h"

#include "radio/Radio.h"

#include <QMenu>
#include <QSettings>

namespace host
{
namespace
{
const QString kKey = QStringLiteral("Sound/device");
} // namespace

std::size_t SoundChoice::Source::pull(float *interleaved, std::size_t frames)
{
    return m_radio.audio().pull(interleaved, frames);
}

SoundChoice::SoundChoice(Radio &radio) : m_radio(radio), m_source(radio), m_pump(m_source)
{
    m_pump.add(m_output.stream());
    m_output.setDevice(radio.settings().value(kKey).toString());
}

SoundChoice::~SoundChoice()
{
    m_pump.remove(m_output.stream());
}

void SoundChoice::choose(const QString &device)
{
    m_output.setDevice(device);
    m_radio.settings().setValue(kKey, device);
}

void SoundChoice::serve(QMenu &menu)
{
    connect(&menu, &QMenu::aboutToShow, this, [this, &menu] {
        fill(menu);
        m_output.refresh();
    });
    // The answer of a look comes while the menu is open.
    connect(&m_output, &SoundOutput::devicesChanged, &menu, [this, &menu] { fill(menu); });
}

void SoundChoice::fill(QMenu &menu)
{
    menu.clear();
    QStringList names = m_output.devices();
    if (!names.contains(QString()))
        names.prepend(QString());
    if (!names.contains(m_output.device()))
        names += m_output.device(); // it may come back
    for (const QString &name : qAsConst(names)) {
        QAction *action = menu.addAction(name.isEmpty() ? tr("&As the system prefers") : name);
        action->setCheckable(true);
        action->setChecked(name == m_output.device());
        connect(action, &QAction::triggered, this, [this, name] { choose(name); });
    }
    menu.addSeparator();
    menu.addAction(m_output.text())->setEnabled(false);
}
} // namespace host
