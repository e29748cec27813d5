// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "sound/SoundDesk.h"

#include <QObject>

#include <functional>

class QMenu;

namespace host
{
class Radio;

/// Which sound card plays what: the loudspeaker always, virtual cable and line output while they
/// have a card. Chosen in a menu and kept in the settings. GUI thread.
class SoundChoice : public QObject
{
    Q_OBJECT

public:
    /// The radio must outlive it.
    explicit SoundChoice(Radio &radio);

    /// Fills the menu whenever it is about to be shown; it goes before this.
    void serve(QMenu &menu);

    SoundOutput &output() { return m_desk.speaker().output(); }
    AudioPump &pump() { return m_desk.speaker().pump(); }

private:
    /// A way out that can be switched off, one row for each.
    struct Way
    {
        const char *title; ///< to be translated
        QString key;       ///< in the settings; without a value it is off
        std::function<void(bool)> setOpen;
        std::function<SoundChannel *()> channel; ///< null: off
    };

    void chooseSpeaker(const QString &device);
    void choose(const Way &way, bool on, const QString &device);
    void fill(QMenu &menu);
    void fill(QMenu &menu, const Way &way);

    Radio &m_radio;
    SoundDesk m_desk;
    const std::vector<Way> m_ways;
};
} // namespace host
