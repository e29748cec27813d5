// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/IqRecording.h"

#include "stream/DiskRefusal.h"
#include "stream/IqFileRepair.h"
#include "stream/StreamLedger.h"

#include "host_interfaces/DeviceAbstract.h"
#include "host_interfaces/EngineLimits.h"
#include "host_interfaces/IQRecorderConfigure.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstring>

namespace host
{
namespace
{
using vm::file::IQFile;

constexpr int kReceiver = 0;

// More than the recorder keeps to itself; it writes every millisecond.
constexpr std::uint64_t kWorthWriting = 4 * EngineLimits::kBlock;

/// Whether a finished file is as long as its header tells. The recorder counts what it hands to the
/// disk and writes the header last, so a full disk leaves a header that tells too much, or none.
bool isWhole(const QString &path, IQFile::Format layout)
{
    QFile file(path);
    IQFile::WaveHeader header;
    if (!file.open(QIODevice::ReadOnly)
        || file.read(reinterpret_cast<char *>(&header), sizeof header) != qint64(sizeof header)
        || std::memcmp(header.riff, "RIFF", sizeof header.riff) != 0)
        return false;
    const auto bytes = std::uint32_t(file.size() - qint64(IQFile::headerBytes(layout)));
    return header.length == bytes + IQFile::lengthOverhead(layout); // both modulo 4 GiB
}
} // namespace

IqRecording::IqRecording(
    DeviceAbstract &device, const IQRecorderConfigure &where, const StreamLedger &ledger)
    : m_device(device), m_where(where), m_ledger(ledger)
{
    connect(&device, &DeviceAbstract::sWriteIQ, this, [this](bool state, int receiver) {
        if (receiver == kReceiver)
            onAnswer(state);
    });
}

bool IqRecording::start()
{
    m_error.clear();
    const QStringList others = QDir(m_where.path).entryList(QDir::Files);
    const QDateTime before = QDateTime::currentDateTime();
    m_bytesSeen = 0;
    m_isAwaited = true;
    m_device.writeIQ(true, kReceiver);
    m_isAwaited = false;
    m_firstSample = m_samplesSeen = m_ledger.processedSamples();
    m_file = findFile(before, others);
    if (!m_isRunning || m_file.isEmpty()) {
        m_isRunning = false;
        const QString file = m_where.fileName(m_device.name(), before);
        m_error = "--record: cannot write " + file + ": " + diskRefusal(file);
        return false;
    }
    return true;
}

/// The device takes the name that the configuration gives for the second of the start, which passes
/// between `from` and now. A file that was there before is another's, unless there is no new one:
/// then it was written over.
QString IqRecording::findFile(const QDateTime &from, const QStringList &others) const
{
    constexpr qint64 kSecondMs = 1000;
    const QDateTime now = QDateTime::currentDateTime();
    QString old;
    // One second more, as `from` may be late in its own.
    for (QDateTime time = from; time < now.addMSecs(kSecondMs); time = time.addMSecs(kSecondMs)) {
        const QString path = m_where.fileName(m_device.name(), std::min(time, now));
        if (!QFileInfo::exists(path))
            continue;
        if (!others.contains(QFileInfo(path).fileName()))
            return path;
        old = path;
    }
    return old;
}

void IqRecording::onAnswer(bool isRunning)
{
    const bool endsByItself = m_isRunning && !isRunning && !m_isAwaited;
    if (endsByItself)
        m_endSample = m_ledger.processedSamples();
    m_isRunning = isRunning;
    if (!endsByItself)
        return;
    measure();
    if (m_error.isEmpty())
        m_error = m_file + ": the receiver ended the recording";
}

void IqRecording::watch()
{
    if (!m_isRunning)
        return;
    const QFileInfo file(m_file);
    const std::uint64_t samples = m_ledger.processedSamples();
    const bool isThere = file.exists();
    if (isThere && file.size() != m_bytesSeen) {
        m_bytesSeen = file.size();
        m_samplesSeen = samples;
        return;
    }
    if (isThere && samples - m_samplesSeen < kWorthWriting)
        return;
    const QString refusal = diskRefusalBeside(m_file);
    if (isThere && refusal.isEmpty())
        return;
    stop(); // what comes once there is room again would not join on
    if (m_error.isEmpty())
        m_error = m_file + ": the recording has ended: " + refusal;
}

void IqRecording::stop()
{
    if (!m_isRunning)
        return;
    m_endSample = m_ledger.processedSamples();
    m_isAwaited = true;
    m_device.writeIQ(false, kReceiver);
    m_isAwaited = false;
    m_isRunning = false;
    measure();
}

void IqRecording::measure()
{
    const qint64 bytes = QFileInfo(m_file).size() - qint64(IQFile::headerBytes(m_where.format));
    m_samples = std::uint64_t(std::max<qint64>(0, bytes / IQFile::kSampleBytes));
    if (isWhole(m_file, m_where.format))
        return;
    m_error = m_file + ": the recording could not be written in full: " + diskRefusal(m_file);
    IqFileRepair::repair(m_file, m_where.format);
}

std::uint64_t IqRecording::lostBlocks() const
{
    const std::uint64_t offered = m_endSample - m_firstSample;
    // The recorder keeps a last rest of less than a block to itself, which rounds away.
    return (offered - std::min(offered, m_samples)) / EngineLimits::kBlock;
}
} // namespace host
