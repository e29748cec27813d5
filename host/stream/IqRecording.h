// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

#include <cstdint>

class DeviceAbstract;
class IQRecorderConfigure;

namespace host
{
class StreamLedger;

/// One recording of the IQ stream by the device's own recorder. Main thread.
///
/// Neither the device nor its recorder tells what was lost, so the recording is measured: what the
/// engine had to offer while it ran against what is in the file.
class IqRecording : public QObject
{
    Q_OBJECT

public:
    /// All must outlive the recording. The folder and the layout are those of `where`.
    IqRecording(
        DeviceAbstract &device, const IQRecorderConfigure &where, const StreamLedger &ledger);

    /// On a running stream. False if the file cannot be written; error() tells which.
    bool start();

    /// To be called again and again while it runs: a file that does not grow with the stream, on a
    /// disk that takes nothing more, ends the recording here, and error() tells why.
    void watch();

    /// Before the stream ends; returns when the file is complete. Does nothing to a recording that
    /// has ended.
    void stop();

    const QString &file() const { return m_file; }

    /// What was wrong with the start, and later with the file: it is not all there (what is, can be
    /// played), or the device ended it by itself. Empty if nothing was.
    const QString &error() const { return m_error; }

    /// What is in the file. After the end.
    std::uint64_t samples() const { return m_samples; }

    /// Blocks of the engine that are not in it. After the end. One that was in work at the
    /// beginning or the end may not be counted; none is counted that is there.
    std::uint64_t lostBlocks() const;

private:
    QString findFile(const QDateTime &from, const QStringList &others) const;
    void onAnswer(bool isRunning);
    void measure();

    DeviceAbstract &m_device;
    const IQRecorderConfigure &m_where;
    const StreamLedger &m_ledger;
    QString m_file;
    QString m_error;
    bool m_isRunning = false;
    bool m_isAwaited = false;        // start() or stop() waits for the device's answer
    std::uint64_t m_firstSample = 0; // of the stream, as is the next
    std::uint64_t m_endSample = 0;
    std::uint64_t m_samples = 0;

    // When the file was last seen to grow.
    qint64 m_bytesSeen = 0;
    std::uint64_t m_samplesSeen = 0; // of the stream
};
} // namespace host
