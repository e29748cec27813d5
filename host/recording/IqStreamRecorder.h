// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/Recorder.h"

#include "stream/IqListener.h"

#include "host_interfaces/IQRecorderConfigure.h"
#include "vm_library/source/containers/CircularBuffer.h"
#include "vm_library/source/file/IQFile.h"

#include <memory>
#include <vector>

namespace host
{
/// Keeps the IQ stream in one of the three layouts, named and laid out as the device's own recorder
/// does it, and made by the same IQFile from the same blocks.
///
/// The device's recorder has one file: at its limit the sizes in the header wrap, and a second file
/// could only begin some blocks after the first had ended. So a recording that shall lose nothing
/// is kept here, where the engine hands its blocks to a ring of 32 MiB (0.7 s at the highest rate):
///
///     engine -> ring -> writer: IQFile, IQFile, ...
///
/// IQFile does not look at what the disk says. Where it refused, the file is shorter than the
/// header tells; it is noticed within a second, and the header is put right.
///
/// Threads: pushIq() on the engine's thread; else as Recorder tells.
class IqStreamRecorder : public Recorder, public IqListener
{
    Q_OBJECT

public:
    IqStreamRecorder() = default;
    ~IqStreamRecorder() override { finish(); }

    /// Begins a file where and how `where` says. device is the name in the file's, rate and
    /// frequency of the stream are in hertz. False: error() tells why.
    bool start(
        const IQRecorderConfigure &where, const QString &device, double rateHz, double frequencyHz);

    /// The file's header holds the one that was set last.
    void setFrequency(double hertz) { m_frequencyHz = hertz; }

    void pushIq(const COMPLEX *block, int samples) override;

protected:
    bool openFile(const QString &path, QString &reason) override;
    bool writeFrames(std::uint64_t most, std::uint64_t &written, QString &reason) override;
    bool closeFile(QString &reason) override;
    std::uint64_t lostFrames() const override { return m_lostFrames; }

private:
    bool isOnDisk(QString &reason);

    vm::file::IQFile::Format m_format = vm::file::IQFile::HDSDR;
    double m_rateHz = 0.0;
    std::atomic<double> m_frequencyHz = 0.0;
    std::unique_ptr<CircularBuffer<COMPLEX>> m_ring; // engine to writer; from the first start on
    std::atomic<std::uint64_t> m_lostFrames = 0;

    // The writer's.
    vm::file::IQFile m_file;
    QString m_path;
    std::vector<COMPLEX> m_block;
    std::uint64_t m_handedOver = 0; // samples of the present file
    std::uint64_t m_checkedAt = 0;
    bool m_isUnsure = false; // something waited at the last check
};
} // namespace host
