// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stream/FrameSource.h"

#include "sound/VariableResampler.h"

#include <QCoreApplication>
#include <QString>

#include <chrono>
#include <memory>
#include <mutex>

struct sf_private_tag;

namespace host
{
/// Plays an audio file (WAV, FLAC and what else libsndfile reads; one or two channels, any rate) as
/// a source of an AudioPump, at the pace of the steady clock.
///
/// Threads: pull() on the pump's thread, everything else on the GUI thread; a lock is held for one
/// block.
class AudioPlayer : public FrameSource
{
    Q_DECLARE_TR_FUNCTIONS(AudioPlayer)

public:
    AudioPlayer();
    ~AudioPlayer() override;

    /// From the beginning, playing. False: error() tells why, and nothing is played.
    bool open(const QString &path);
    void close();
    const QString &error() const { return m_error; }

    double lengthSeconds() const;
    double positionSeconds() const;
    void seek(double seconds);
    void setPaused(bool paused);
    void setLoop(bool loop);
    bool hasEnded() const;

    std::size_t pull(float *interleaved, std::size_t frames) override;

private:
    using Clock = std::chrono::steady_clock;

    struct Close
    {
        void operator()(sf_private_tag *file) const;
    };

    std::size_t read(float *interleaved, std::size_t frames);
    void restartClock();

    mutable std::mutex m_mutex;
    QString m_error;

    // Guarded by m_mutex.
    std::unique_ptr<sf_private_tag, Close> m_file;
    int m_fileHz = kRateHz;
    int m_fileChannels = kChannels;
    std::int64_t m_length = 0;   // frames of the file
    std::int64_t m_position = 0; // next one that is read
    bool m_isPaused = false;
    bool m_isLooping = false;
    VariableResampler m_resampler;
    Clock::time_point m_started;
    std::uint64_t m_given = 0; // frames since then
};
} // namespace host
