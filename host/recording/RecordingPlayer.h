// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/AudioPlayer.h"

#include <QObject>
#include <QTimer>

namespace host
{
class AudioPump;
class Radio;

/// Plays recordings: IQ through the virtual receiver, as if it were on the air, and audio in place
/// of what the receiver gives.
///
/// For a window: open() of the file menu, stop() to go back to the air; a slider of 0..length()
/// that moves with positionChanged() and calls seek(); buttons for setPaused() and setLoop(), grey
/// while isOpen() is false.
///
/// GUI thread. Radio and pump must outlive the player.
class RecordingPlayer : public QObject
{
    Q_OBJECT

public:
    enum class Kind { None, Iq, Audio };

    static constexpr int kTickMs = 100;

    /// pump is that of the loudspeaker.
    RecordingPlayer(Radio &radio, AudioPump &pump);
    ~RecordingPlayer() override;

    /// What is in a file, by its name and its header: FLAC and float WAV are audio as this program
    /// keeps it, raw formats and 24-bit WAV are IQ; other WAVs are IQ if their name says so.
    static Kind kindOf(const QString &path);

    /// Plays a recording from its beginning. False: error() tells why, and all goes on as before.
    bool open(const QString &path) { return open(path, kindOf(path)); }
    bool open(const QString &path, Kind kind);

    /// Ends the recording. What the receiver heard before IQ is not chosen again: that is
    /// Radio::openScene().
    void stop();

    const QString &error() const { return m_error; }
    bool isOpen() const { return m_kind != Kind::None; }
    Kind kind() const { return m_kind; }
    const QString &file() const { return m_file; }

    /// Seconds.
    double length() const;
    double position() const;
    void seek(double seconds);

    bool isPaused() const { return m_isPaused; }
    void setPaused(bool paused);
    bool isLooping() const { return m_isLooping; }
    void setLoop(bool loop);

signals:
    /// Another file, or none.
    void fileChanged(const QString &path);
    void positionChanged(double seconds);

    /// By setPaused(), and at the end of what is not looped.
    void pausedChanged(bool paused);

private:
    void onTick();
    void onScene(const QString &name);
    void setKind(Kind kind, const QString &file);

    Radio &m_radio;
    AudioPump &m_pump;
    AudioPlayer m_audio;
    QTimer m_tick;
    Kind m_kind = Kind::None;
    QString m_file;
    QString m_error;
    bool m_isPaused = false;
    bool m_isLooping = false;
};
} // namespace host
