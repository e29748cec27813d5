// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frame/SoundChoice.h"

#include "radio/Radio.h"

#include <QMenu>
#include <QSettings>

namespace host
{
namespace
{
const QString kSpeakerKey = QStringLiteral("Sound/device");

void addCard(QMenu &menu, const QString &text, bool isChosen, const std::function<void()> &choose)
{
    QAction *action = menu.addAction(text);
    action->setCheckable(true);
    action->setChecked(isChosen);
    QObject::connect(action, &QAction::triggered, &menu, choose);
}
} // namespace

SoundChoice::SoundChoice(Radio &radio)
    : m_radio(radio),
      m_desk(radio), m_ways{{QT_TR_NOOP("&Virtual cable"), QStringLiteral("Sound/cable"),
                                [this](bool on) { m_desk.setVac(on); },
                                [this] { return m_desk.vac(); }},
                         {QT_TR_NOOP("&Line output"), QStringLiteral("Sound/line"),
                             [this](bool on) { m_desk.setLineOut(on); },
                             [this] { return m_desk.lineOut(); }}}
{
    output().setDevice(radio.settings().value(kSpeakerKey).toString());
    for (const Way &way : m_ways)
        if (radio.settings().contains(way.key))
            choose(way, true, radio.settings().value(way.key).toString());
}

void SoundChoice::chooseSpeaker(const QString &device)
{
    output().setDevice(device);
    m_radio.settings().setValue(kSpeakerKey, device);
}

void SoundChoice::choose(const Way &way, bool on, const QString &device)
{
    way.setOpen(on);
    if (!on) {
        m_radio.settings().remove(way.key);
        return;
    }
    way.channel()->output().setDevice(device);
    m_radio.settings().setValue(way.key, device);
}

void SoundChoice::serve(QMenu &menu)
{
    connect(&menu, &QMenu::aboutToShow, this, [this, &menu] {
        fill(menu);
        output().refresh();
    });
    // The answer of a look comes while the menu is open.
    connect(&output(), &SoundOutput::devicesChanged, &menu, [this, &menu] { fill(menu); });
}

void SoundChoice::fill(QMenu &menu)
{
    // Those of the last time: a menu keeps the menus in it when it is cleared.
    for (QMenu *way : menu.findChildren<QMenu *>(QString(), Qt::FindDirectChildrenOnly))
        way->deleteLater();
    menu.clear();
    QStringList names = output().devices();
    if (!names.contains(QString()))
        names.prepend(QString());
    if (!names.contains(output().device()))
        names += output().device(); // it may come back
    for (const QString &name : qAsConst(names))
        addCard(menu, name.isEmpty() ? tr("&As the system prefers") : name,
            name == output().device(), [this, name] { chooseSpeaker(name); });
    menu.addSeparator();
    menu.addAction(output().text())->setEnabled(false);
    menu.addSeparator();
    for (const Way &way : m_ways)
        fill(*menu.addMenu(tr(way.title)), way);
}

void SoundChoice::fill(QMenu &menu, const Way &way)
{
    SoundChannel *channel = way.channel();
    addCard(menu, tr("&Off"), !channel, [this, &way] { choose(way, false, {}); });
    QStringList names = output().devices();
    if (channel && !names.contains(channel->output().device()))
        names += channel->output().device();
    for (const QString &name : qAsConst(names))
        addCard(menu, name.isEmpty() ? tr("&As the system prefers") : name,
            channel && name == channel->output().device(),
            [this, &way, name] { choose(way, true, name); });
    if (channel) {
        menu.addSeparator();
        menu.addAction(channel->output().text())->setEnabled(false);
    }
}
} // namespace host
