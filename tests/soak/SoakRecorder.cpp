// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoakRecorder.h"

#include "SoakStream.h"
#include "plugin/PluginRig.h"

#include "host_interfaces/EngineLimits.h"
#include "vm_library/source/file/IQFile.h"
#include "vm_library/source/file/PackedSample.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace soak
{
namespace
{
// Seconds of stream. The pieces are short as the disk takes a free run no faster than any other.
constexpr double kLeastPause = 5.0;
constexpr double kMostPause = 60.0;
constexpr double kLeastPiece = 0.05;
constexpr double kMostPiece = 1.0;

constexpr std::uint64_t kDroppedTail = 16; // samples, at the end of every recording
} // namespace

SoakRecorder::SoakRecorder(test::PluginRig &rig, SoakStream &stream, double rateHz, unsigned seed)
    : m_rig(rig), m_stream(stream), m_rateHz(rateHz), m_random(seed), m_due(fromNow(0.0, 1.0))
{
    m_rig.bridge().setRecordingPath(m_folder.path());
}

std::uint64_t SoakRecorder::fromNow(double leastSeconds, double mostSeconds)
{
    const double seconds = std::uniform_real_distribution(leastSeconds, mostSeconds)(m_random);
    return m_stream.processed() + std::uint64_t(seconds * m_rateHz);
}

void SoakRecorder::advance()
{
    if (m_stream.processed() < m_due)
        return;
    m_isRecording ? finish() : start();
}

void SoakRecorder::start()
{
    m_rig.bridge().setRecordingFormat(
        vm::file::IQFile::Format(std::uniform_int_distribution(0, 2)(m_random)));
    m_before = m_stream.processed();
    m_rig.device().writeIQ(true, 0);
    m_started = m_stream.processed();
    m_due = fromNow(kLeastPiece, kMostPiece);
    m_isRecording = true;
}

void SoakRecorder::finish()
{
    if (!m_isRecording)
        return;
    const std::uint64_t end = m_stream.processed();
    m_rig.device().writeIQ(false, 0);
    // A block that is being worked on may or may not be in the file.
    constexpr std::uint64_t kSlack = 2 * EngineLimits::kBlock + kDroppedTail;
    const std::uint64_t sure = end - m_started;
    check(sure - std::min(sure, kSlack), m_stream.processed() - m_before + kSlack);
    m_due = fromNow(kLeastPause, kMostPause);
    m_isRecording = false;
}

void SoakRecorder::check(std::uint64_t least, std::uint64_t most)
{
    ++m_recordings;
    QDir folder(m_folder.path());
    const QStringList names = folder.entryList(QDir::Files);
    const qint64 header =
        vm::file::IQFile::headerBytes(m_rig.bridge().iqRecorderConfigure()->format);
    QFile file(folder.filePath(names.value(0)));
    const qint64 bytes = file.size() - header;
    if (names.size() != 1 || bytes < 0 || bytes % qint64(vm::file::kPackedSampleSize) != 0
        || !file.open(QIODevice::ReadOnly) || file.read(4) != "RIFF")
        ++m_broken;
    const auto samples = std::uint64_t(std::max<qint64>(bytes, 0)) / vm::file::kPackedSampleSize;
    m_missing += least - std::min(least, samples);
    if (samples > most)
        ++m_broken;
    for (const QString &name : names)
        folder.remove(name);
}
} // namespace soak
