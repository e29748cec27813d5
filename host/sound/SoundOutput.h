// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "sound/SoundStream.h"

#include <QObject>
#include <QStringList>
#include <QThread>

namespace host
{
class SoundCard;

/// Plays what is pushed into stream() on a sound card: PulseAudio, PipeWire's pulse service or
/// ALSA, whichever Qt Multimedia finds. Without a card it says so and takes one that comes later; a
/// card that goes is waited for.
///
/// For a window: devices() fills a list whose first entry is "as the system prefers" (an empty
/// name), refresh() when the list is about to be shown, setDevice() when one is chosen, text() and
/// isPlaying() for a line of status. stream() has volume, mute, and what a display of health shows.
///
/// Threads: GUI; the stream as it says. The card is worked on a thread of its own.
class SoundOutput : public QObject
{
    Q_OBJECT

public:
    SoundOutput();
    ~SoundOutput() override;

    SoundStream &stream() { return m_stream; }
    const SoundStream &stream() const { return m_stream; }

    /// Names of cards, as they were found last. The first look is at the start of the program.
    const QStringList &devices() const { return m_devices; }
    void refresh();

    /// Plays there from now on; an empty name is the card that the system prefers.
    void setDevice(const QString &name);

    /// The one that was chosen.
    const QString &device() const { return m_device; }

    /// Lets the card go.
    void stop();

    bool isPlaying() const { return m_isPlaying; }

    /// The name of the card that plays, or why none does, in one line.
    const QString &text() const { return m_text; }

signals:
    void devicesChanged(const QStringList &names);
    void stateChanged(bool isPlaying, const QString &text);

private:
    void setState(bool isPlaying, const QString &text);
    void show(bool isPlaying, const QString &text);

    SoundStream m_stream;
    QStringList m_devices;
    QString m_device;
    QString m_text;
    bool m_isWanted = false;
    bool m_isPlaying = false;
    QThread m_thread;
    SoundCard *m_card; // lives on m_thread and ends with it
};
} // namespace host
