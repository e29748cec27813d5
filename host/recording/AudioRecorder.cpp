// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/AudioRecorder.h"

#include "stream/FrameSource.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>

#include <algorithm>

namespace host
{
namespace
{
constexpr unsigned kRingFrames = 1 << 18; // 5.5 s, for which a disk may be busy
constexpr std::size_t kBlock = 4096;      // frames written at a time
constexpr std::uint64_t kWavFrameBytes = 2 * sizeof(float);
constexpr std::uint64_t kFlacFrameBytes = 2 * 3; // of what cannot be packed

static_assert(sizeof(COMPLEX32) == kWavFrameBytes);
} // namespace

AudioRecorder::AudioRecorder() : m_ring(kRingFrames), m_block(kBlock) { }

bool AudioRecorder::start(const QString &folder, FileType type)
{
    stop();
    m_type = type;
    m_ring.clear();
    m_lostFrames = 0;
    const char *suffix = type == FileType::Flac ? "flac" : "wav";
    const auto namer = [folder, suffix] {
        return QDir(folder).filePath(
            QString("%1_audio_%2.%3")
                .arg(QCoreApplication::applicationName(),
                    QDateTime::currentDateTime().toString("yyyyMMdd_hh-mm-ss"), suffix));
    };
    const std::uint64_t bytes = type == FileType::Flac ? kFlacFrameBytes : kWavFrameBytes;
    return begin({bytes, double(FrameSource::kRateHz)}, namer);
}

void AudioRecorder::push(const float *interleaved, std::size_t frames)
{
    if (takes() && !m_ring.write(reinterpret_cast<const COMPLEX32 *>(interleaved), int(frames)))
        m_lostFrames += frames;
}

bool AudioRecorder::openFile(const QString &path, QString &reason)
{
    const bool isFlac = m_type == FileType::Flac;
    const bool isGood = isFlac ? m_flac.open(path) : m_wav.open(path);
    if (!isGood)
        reason = isFlac ? m_flac.error() : m_wav.error();
    return isGood;
}

bool AudioRecorder::writeFrames(std::uint64_t most, std::uint64_t &written, QString &reason)
{
    written = std::min<std::uint64_t>({most, kBlock, m_ring.count()});
    if (written == 0 || !m_ring.read(m_block.data(), int(written))) {
        written = 0;
        return true;
    }
    const auto *samples = reinterpret_cast<const float *>(m_block.data());
    const bool isFlac = m_type == FileType::Flac;
    if (isFlac ? m_flac.write(samples, written) : m_wav.write(samples, written))
        return true;
    reason = isFlac ? m_flac.error() : m_wav.error();
    return false;
}

bool AudioRecorder::closeFile(QString &reason)
{
    const bool isFlac = m_type == FileType::Flac;
    if (isFlac ? m_flac.close() : m_wav.close())
        return true;
    reason = isFlac ? m_flac.error() : m_wav.error();
    return false;
}
} // namespace host
