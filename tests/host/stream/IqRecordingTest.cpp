// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/IqRecording.h"

#include "stream/StreamLedger.h"
#include "support/BareDevice.h"
#include "support/FileSizeLimit.h"

#include "host_interfaces/EngineLimits.h"
#include "host_interfaces/IQRecorderConfigure.h"

#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <gtest/gtest.h>

namespace
{
using vm::file::IQFile;

/// A device with a real recorder and blocks at hand.
class RecordingDevice : public test::BareDevice
{
public:
    RecordingDevice(const IQRecorderConfigure &where, host::StreamLedger &ledger)
        : m_where(where), m_ledger(ledger)
    { }
    QString name() override { return "Device"; }

    void writeIQ(bool on, int receiver) override
    {
        m_file.setFormat(m_where.format);
        const bool isOpen = on && m_file.open(m_where.fileName(name()));
        if (!on)
            m_file.close();
        if (isOpen || !on)
            Q_EMIT sWriteIQ(isOpen, receiver);
    }

    /// Blocks of the engine, each of which the recorder gets but for every `refused`-th.
    void receive(int blocks, int refused = 0)
    {
        for (int i = 1; i <= blocks; ++i) {
            m_ledger.beginBlock(m_block.data(), int(m_block.size()));
            if (refused == 0 || i % refused != 0)
                while (m_file.isOpen() && !m_file.write(m_block)) // until the ring has room
                    QThread::msleep(1);
            m_ledger.endBlock();
        }
    }

private:
    const IQRecorderConfigure &m_where;
    host::StreamLedger &m_ledger;
    IQFile m_file;
    std::vector<COMPLEX> m_block = std::vector<COMPLEX>(EngineLimits::kBlock, COMPLEX{1e-3, 0.0});
};

class IqRecordingTest : public testing::Test
{
protected:
    IqRecordingTest()
    {
        m_where.path = m_folder.path();
        m_where.format = IQFile::StandartWave;
    }

    const QTemporaryDir m_folder;
    IQRecorderConfigure m_where;
    host::StreamLedger m_ledger;
    RecordingDevice m_device{m_where, m_ledger};
    host::IqRecording m_recording{m_device, m_where, m_ledger};
};

TEST_F(IqRecordingTest, BlocksThatAreNotInTheFileAreCounted)
{
    constexpr double kRest = 17; // samples that the recorder may keep to itself
    m_device.receive(3);
    ASSERT_TRUE(m_recording.start()) << qPrintable(m_recording.error());
    m_device.receive(40, 8);
    m_recording.stop();
    m_device.receive(3);
    EXPECT_EQ(m_recording.lostBlocks(), 5u);
    EXPECT_NEAR(double(m_recording.samples()), 35.0 * EngineLimits::kBlock, kRest);
    EXPECT_EQ(m_recording.error(), QString());
    EXPECT_TRUE(QFile::exists(m_recording.file()));
}

TEST_F(IqRecordingTest, AFullDiskIsToldAtOnceAndLeavesAFileThatCanBePlayed)
{
    std::signal(SIGXFSZ, SIG_IGN);
    constexpr rlim_t kRoom = 50000;
    for (const auto format : {IQFile::StandartWave, IQFile::HDSDR, IQFile::VelmoraSDR2}) {
        m_where.format = format;
        ASSERT_TRUE(m_recording.start());
        {
            const test::FileSizeLimit limit(kRoom);
            constexpr int kMost = 10000; // blocks, for a machine that is busy
            for (int i = 0; i < kMost && m_recording.error().isEmpty(); ++i) {
                m_device.receive(1);
                QThread::msleep(1);
                m_recording.watch();
            }
        }
        EXPECT_TRUE(m_recording.error().startsWith(m_recording.file() + ": "))
            << qPrintable(m_recording.error());
        const auto bytes = std::uint32_t(m_recording.samples()) * 6;
        EXPECT_GT(bytes, 0u);
        EXPECT_LE(bytes + IQFile::headerBytes(format), kRoom);
        QFile file(m_recording.file());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        IQFile::WaveHeader header;
        file.read(reinterpret_cast<char *>(&header), sizeof header);
        EXPECT_EQ(header.length, bytes + IQFile::lengthOverhead(format));
        EXPECT_EQ(file.size(), qint64(bytes + IQFile::headerBytes(format)));
    }
}

TEST_F(IqRecordingTest, WatchingEndsNothingButAFileThatIsGone)
{
    ASSERT_TRUE(m_recording.start());
    for (int i = 0; i < 20; ++i) {
        m_device.receive(i % 5); // with pauses, and faster than the recorder writes
        m_recording.watch();
    }
    EXPECT_EQ(m_recording.error(), QString());
    QFile::remove(m_recording.file());
    m_recording.watch();
    EXPECT_TRUE(m_recording.error().startsWith(m_recording.file() + ": "));
}
} // namespace
