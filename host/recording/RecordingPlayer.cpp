// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/RecordingPlayer.h"

#include "radio/Radio.h"
#include "sound/AudioPump.h"

#include <QFile>
#include <QFileInfo>

#include <sndfile.h>

namespace host
{
RecordingPlayer::RecordingPlayer(Radio &radio, AudioPump &pump) : m_radio(radio), m_pump(pump)
{
    connect(&m_tick, &QTimer::timeout, this, &RecordingPlayer::onTick);
    connect(&radio, &Radio::sceneChanged, this, &RecordingPlayer::onScene);
}

RecordingPlayer::~RecordingPlayer()
{
    m_pump.play(nullptr);
}

RecordingPlayer::Kind RecordingPlayer::kindOf(const QString &path)
{
    SF_INFO info{};
    SNDFILE *file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &info);
    if (!file)
        return Kind::Iq; // what only the virtual receiver may know
    sf_close(file);
    const int type = info.format & SF_FORMAT_TYPEMASK;
    const int code = info.format & SF_FORMAT_SUBMASK;
    const bool isWav = type == SF_FORMAT_WAV || type == SF_FORMAT_WAVEX || type == SF_FORMAT_RF64;
    if (!isWav || info.channels != 2)
        return Kind::Audio;
    const QString name = QFileInfo(path).completeBaseName();
    if (name.contains("iq", Qt::CaseInsensitive) || name.endsWith("Hz"))
        return Kind::Iq;
    const bool isOurAudio = name.contains("_audio_");
    return !isOurAudio && code == SF_FORMAT_PCM_24 ? Kind::Iq : Kind::Audio;
}

bool RecordingPlayer::open(const QString &path, Kind kind)
{
    m_error.clear();
    if (kind == Kind::Audio && !m_audio.open(path))
        m_error = m_audio.error();
    else if (kind == Kind::Iq && !m_radio.virtualReceiver())
        m_error = path + ": " + tr("IQ is played by the virtual receiver, which is not in use");
    else if (kind == Kind::Iq && !m_radio.openScene(path))
        m_error = m_radio.error();
    if (!m_error.isEmpty())
        return false;
    m_pump.play(kind == Kind::Audio ? &m_audio : nullptr);
    if (kind != Kind::Audio)
        m_audio.close();
    setKind(kind, path);
    setLoop(m_isLooping);
    return true;
}

void RecordingPlayer::stop()
{
    if (m_kind == Kind::Iq)
        m_radio.virtualReceiver()->scenePause(0);
    m_pump.play(nullptr);
    m_audio.close();
    setKind(Kind::None, {});
}

/// Somebody chose another scene.
void RecordingPlayer::onScene(const QString &name)
{
    if (m_kind == Kind::Iq && name != m_file)
        setKind(Kind::None, {});
}

void RecordingPlayer::setKind(Kind kind, const QString &file)
{
    m_kind = kind;
    m_file = file;
    isOpen() ? m_tick.start(kTickMs) : m_tick.stop();
    if (std::exchange(m_isPaused, false))
        emit pausedChanged(false);
    emit fileChanged(file);
}

double RecordingPlayer::length() const
{
    return m_kind == Kind::Iq ? m_radio.virtualReceiver()->sceneSeconds() : m_audio.lengthSeconds();
}

double RecordingPlayer::position() const
{
    return m_kind == Kind::Iq ? m_radio.virtualReceiver()->scenePosition()
                              : m_audio.positionSeconds();
}

void RecordingPlayer::seek(double seconds)
{
    if (m_kind == Kind::Iq)
        m_radio.virtualReceiver()->sceneSeek(seconds);
    else
        m_audio.seek(seconds);
    emit positionChanged(position());
}

void RecordingPlayer::setPaused(bool paused)
{
    if (!isOpen() || paused == m_isPaused)
        return;
    const bool isAtEnd = position() >= length() && !m_isLooping;
    if (!paused && isAtEnd)
        seek(0.0);
    if (m_kind == Kind::Iq)
        m_radio.virtualReceiver()->scenePause(paused);
    else
        m_audio.setPaused(paused);
    m_isPaused = paused;
    emit pausedChanged(paused);
}

void RecordingPlayer::setLoop(bool loop)
{
    m_isLooping = loop;
    m_audio.setLoop(loop);
    if (m_radio.virtualReceiver())
        m_radio.virtualReceiver()->sceneLoop(loop);
}

void RecordingPlayer::onTick()
{
    const double now = position();
    emit positionChanged(now);
    if (!m_isLooping && now >= length())
        setPaused(true);
}
} // namespace host
