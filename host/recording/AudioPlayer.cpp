// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/AudioPlayer.h"

#include <QFile>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include <sndfile.h>

namespace host
{
namespace
{
/// A FLAC that was broken off does not tell its length, so it is read once.
std::int64_t framesOf(SNDFILE &file, const SF_INFO &info)
{
    if (info.frames < std::numeric_limits<sf_count_t>::max())
        return info.frames;
    std::vector<float> block(4096 * std::size_t(info.channels));
    std::int64_t frames = 0;
    for (sf_count_t got = 1; got > 0; frames += got)
        got = sf_readf_float(&file, block.data(), 4096);
    sf_seek(&file, 0, SEEK_SET);
    return frames;
}
} // namespace

void AudioPlayer::Close::operator()(sf_private_tag *file) const
{
    sf_close(file);
}

AudioPlayer::AudioPlayer()
    : m_resampler([this](float *out, std::size_t frames) { return read(out, frames); })
{ }

AudioPlayer::~AudioPlayer() = default;

bool AudioPlayer::open(const QString &path)
{
    SF_INFO info{};
    decltype(m_file) file(sf_open(QFile::encodeName(path).constData(), SFM_READ, &info));
    m_error.clear();
    if (!file)
        m_error = QString::fromLocal8Bit(sf_strerror(nullptr)).simplified();
    else if (info.channels > kChannels || info.frames == 0 || !info.seekable)
        m_error = tr("no audio that can be played");
    if (!m_error.isEmpty()) {
        m_error = path + ": " + m_error;
        return false;
    }
    const std::int64_t length = framesOf(*file, info);
    std::lock_guard lock(m_mutex);
    m_file = std::move(file);
    m_fileHz = info.samplerate;
    m_fileChannels = info.channels;
    m_length = length;
    m_position = 0;
    m_isPaused = false;
    m_resampler.clear();
    restartClock();
    return true;
}

void AudioPlayer::close()
{
    std::lock_guard lock(m_mutex);
    m_file.reset();
    m_length = m_position = 0;
}

void AudioPlayer::restartClock()
{
    m_started = Clock::now();
    m_given = 0;
}

double AudioPlayer::lengthSeconds() const
{
    std::lock_guard lock(m_mutex);
    return double(m_length) / m_fileHz;
}

double AudioPlayer::positionSeconds() const
{
    std::lock_guard lock(m_mutex);
    return double(m_position) / m_fileHz;
}

void AudioPlayer::seek(double seconds)
{
    std::lock_guard lock(m_mutex);
    const double frame = std::isfinite(seconds) ? seconds * m_fileHz : 0.0;
    m_position = std::int64_t(std::clamp(frame, 0.0, double(m_length)));
    m_resampler.clear();
    if (m_file)
        sf_seek(m_file.get(), m_position, SEEK_SET);
}

void AudioPlayer::setPaused(bool paused)
{
    std::lock_guard lock(m_mutex);
    m_isPaused = paused;
    restartClock();
}

void AudioPlayer::setLoop(bool loop)
{
    std::lock_guard lock(m_mutex);
    m_isLooping = loop;
}

bool AudioPlayer::hasEnded() const
{
    std::lock_guard lock(m_mutex);
    return m_position >= m_length && !m_isLooping;
}

/// What is due by the clock, and no more.
std::size_t AudioPlayer::pull(float *interleaved, std::size_t frames)
{
    std::lock_guard lock(m_mutex);
    if (!m_file || m_isPaused)
        return 0;
    const std::chrono::duration<double> run = Clock::now() - m_started;
    const auto due = std::uint64_t(run.count() * kRateHz);
    frames = std::min<std::uint64_t>(frames, due - std::min(due, m_given));
    const std::size_t made = m_fileHz == kRateHz
        ? read(interleaved, frames)
        : m_resampler.process(interleaved, frames, double(kRateHz) / m_fileHz);
    m_given += frames; // after the end time goes on
    return made;
}

std::size_t AudioPlayer::read(float *interleaved, std::size_t frames)
{
    std::size_t done = 0;
    while (done < frames) {
        float *out = interleaved + done * kChannels;
        const auto got = std::size_t(
            std::max<sf_count_t>(0, sf_readf_float(m_file.get(), out, sf_count_t(frames - done))));
        if (m_fileChannels == 1)
            for (std::size_t i = got; i-- > 0;)
                out[2 * i] = out[2 * i + 1] = out[i];
        done += got;
        m_position += std::int64_t(got);
        if (done == frames)
            break;
        if (!m_isLooping || m_position == 0)
            break;
        m_position = 0;
        sf_seek(m_file.get(), 0, SEEK_SET);
    }
    return done;
}
} // namespace host
