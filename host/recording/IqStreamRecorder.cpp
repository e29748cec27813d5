// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/IqStreamRecorder.h"

#include "stream/DiskRefusal.h"
#include "stream/IqFileRepair.h"

#include <QFileInfo>

#include <algorithm>
#include <chrono>

namespace host
{
namespace
{
using namespace std::chrono_literals;
using vm::file::IQFile;

constexpr unsigned kRingSamples = 1 << 21;
constexpr std::size_t kBlock = 4096; // samples; IQFile takes 10922 at most

// What a sweep in work and the file's buffer may hold back, beside what waits in IQFile.
constexpr std::uint64_t kHeldBack = 4 * IQFile::kRingBytes;
constexpr auto kRetry = 500us;
} // namespace

bool IqStreamRecorder::start(
    const IQRecorderConfigure &where, const QString &device, double rateHz, double frequencyHz)
{
    stop();
    if (!m_ring)
        m_ring = std::make_unique<CircularBuffer<COMPLEX>>(kRingSamples);
    m_ring->clear();
    m_lostFrames = 0;
    m_block.reserve(kBlock);
    m_format = where.format;
    m_rateHz = rateHz;
    m_frequencyHz = frequencyHz;
    // The configuration may change during the recording.
    const auto namer = [path = where.path, format = where.format, device] {
        IQRecorderConfigure at;
        at.path = path;
        at.format = format;
        return at.fileName(device);
    };
    return begin({IQFile::kSampleBytes, rateHz}, namer);
}

void IqStreamRecorder::pushIq(const COMPLEX *block, int samples)
{
    if (takes() && !m_ring->write(block, samples))
        m_lostFrames += std::uint64_t(samples);
}

bool IqStreamRecorder::openFile(const QString &path, QString &reason)
{
    m_path = path;
    m_handedOver = m_checkedAt = 0;
    m_isUnsure = false;
    m_file.setFormat(m_format);
    m_file.setSampleRate(m_rateHz);
    if (m_file.open(path))
        return true;
    reason = diskRefusal(path);
    return false;
}

bool IqStreamRecorder::writeFrames(std::uint64_t most, std::uint64_t &written, QString &reason)
{
    written = std::min<std::uint64_t>({most, kBlock, m_ring->count()});
    m_block.resize(written);
    if (written == 0 || !m_ring->read(m_block.data(), int(written))) {
        written = 0;
        return !m_isUnsure || m_file.waiting() > 0 || isOnDisk(reason);
    }
    while (!m_file.write(m_block))
        std::this_thread::sleep_for(kRetry); // its thread is writing
    m_handedOver += written;
    if (double(m_handedOver - m_checkedAt) < m_rateHz)
        return true;
    m_checkedAt = m_handedOver;
    return isOnDisk(reason);
}

bool IqStreamRecorder::isOnDisk(QString &reason)
{
    // In this order, as what waits gets into the file meanwhile.
    const std::uint64_t waiting = m_file.waiting();
    m_isUnsure = waiting > 0; // the disk may still refuse it
    const auto bytes = std::uint64_t(QFileInfo(m_path).size());
    if (bytes + waiting + kHeldBack >= m_handedOver * IQFile::kSampleBytes)
        return true;
    reason = diskRefusal(m_path);
    return false;
}

bool IqStreamRecorder::closeFile(QString &reason)
{
    m_file.setFrequency(m_frequencyHz);
    m_file.close();
    // Up to 100 bytes of the end stay in IQFile, as in the device's recorder.
    constexpr std::uint64_t kTailSamples = 100 / IQFile::kSampleBytes;
    const auto samples = IqFileRepair::repair(m_path, m_format);
    if (samples && *samples + kTailSamples >= m_handedOver)
        return true;
    reason = diskRefusal(m_path);
    return false;
}
} // namespace host
