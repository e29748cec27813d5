// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "sound/SoundStream.h"

#include <QAudio>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <memory>

class QAudioDeviceInfo;
class QAudioOutput;

namespace host
{
class RenderDevice;

/// The sound thread's half of SoundOutput: finds the sound card, opens it, feeds it, and looks for
/// it again when it has gone. Lives on the sound thread, where everything of Qt Multimedia happens:
/// a sound server that answers late keeps nobody else waiting.
class SoundCard : public QObject
{
    Q_OBJECT

public:
    static constexpr int kLookMs = 1000;          ///< between looks for a card that is not there
    static constexpr int kMostStandstill = 4;     ///< looks; a sound server may need two to begin
    static constexpr double kBufferSeconds = 0.1; ///< asked of the card

    /// The stream must outlive the card.
    explicit SoundCard(SoundStream &stream);
    ~SoundCard() override;

    /// Plays on the card of that name from now on; an empty name: the one that the system prefers.
    void play(const QString &name);
    void stop();

    /// Tells the list, and looks for the card at once.
    void look();

signals:
    void devicesFound(const QStringList &names);

    /// It plays, on that card.
    void playing(const QString &name);

    /// It does not; why, in one line.
    void waiting(const QString &reason);

private:
    void tryOpen();
    bool open(const QAudioDeviceInfo &device);
    void close();
    void lose(const QString &reason);
    void onTimer();

    SoundStream &m_stream;
    QString m_name;
    bool m_isWanted = false;
    QTimer m_timer;
    std::unique_ptr<QAudioOutput> m_output;
    std::unique_ptr<RenderDevice> m_feed;
    std::uint64_t m_playedBefore = 0; // frames, at the last look
    int m_standstill = 0;             // looks at which nothing more was played
};
} // namespace host
