// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineTest.h"

#include "support/LogCapture.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
using vm::file::IQFile;

constexpr int kBytesPerSample = 6;
constexpr int kLostAtTheEnd = 100; // bytes that the file's ring may keep at a stop

class EngineRecorderTest : public EngineTest
{
protected:
    QString path(const char *name) const { return folder.path() + "/" + name; }

    static QByteArray content(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// I as the 24 bits that the layout without a gain keeps.
    static int code(const COMPLEX &sample) { return int(sample.re * 2147483647.0) >> 8; }
    static int code(const char *bytes)
    {
        return (qFromLittleEndian<quint16>(bytes) | qint8(bytes[2]) * 65536);
    }

    QTemporaryDir folder;
};
} // namespace

TEST_F(EngineRecorderTest, RecordsTheStreamInEachLayout)
{
    const struct
    {
        IQFile::Format format;
        int header;      // bytes ahead of the samples
        const char *tag; // of the chunk after the first
    } rows[] = {{IQFile::VelmoraSDR2, 112, "vsdr"}, {IQFile::StandartWave, 44, "data"},
        {IQFile::HDSDR, 216, "auxi"}};
    constexpr int kBlocks = 20; // they fit into the file's ring
    engine.setSampleRate(96000.0);
    std::vector<COMPLEX> stream;
    iqServer.onWrite = [&](COMPLEX *block, int count) {
        stream.insert(stream.end(), block, block + count);
    };
    engine.setIqServer(&iqServer);
    start();
    for (const auto &row : rows) {
        const QString file = path(row.tag);
        engine.setIQFormat(row.format);
        ASSERT_TRUE(engine.iqRecorderStart(file));
        EXPECT_TRUE(engine.isIqRecording());
        engine.iqRecorder()->setFrequency(7.1e6);
        stream.clear();
        playTone(kBlocks, 1e-3);
        engine.iqRecorderStop();
        EXPECT_FALSE(engine.isIqRecording());
        playTone(1, 1e-3); // goes nowhere

        const QByteArray bytes = content(file);
        constexpr int kData = kBlocks * kBlock * kBytesPerSample;
        EXPECT_LE(bytes.size(), row.header + kData) << row.tag;
        EXPECT_GE(bytes.size(), row.header + kData - kLostAtTheEnd) << row.tag;
        ASSERT_GT(bytes.size(), row.header + kData / 2);
        EXPECT_EQ(bytes.mid(36, 4), row.tag);
        EXPECT_EQ(qFromLittleEndian<quint32>(bytes.constData() + 24), 96000u) << row.tag;
        if (row.format == IQFile::HDSDR) {
            EXPECT_EQ(qFromLittleEndian<quint32>(bytes.constData() + 76), 7100000u);
        }
        if (row.format == IQFile::VelmoraSDR2) {
            for (int n = 0; n < kBlock; ++n) // what the server of the stream gets too
                ASSERT_EQ(code(bytes.constData() + row.header + n * kBytesPerSample),
                    code(stream[std::size_t(n)]))
                    << n;
        }
    }
}

TEST_F(EngineRecorderTest, ARefusedStartChangesNothing)
{
    const test::LogCapture log;
    EXPECT_FALSE(engine.iqRecorderStart(path("missing/file.wav")));
    EXPECT_FALSE(engine.isIqRecording());
    ASSERT_TRUE(engine.iqRecorderStart(path("first.wav")));
    EXPECT_FALSE(engine.iqRecorderStart(path("second.wav")));
    EXPECT_TRUE(engine.isIqRecording());
    EXPECT_FALSE(QFile::exists(path("second.wav")));
    engine.iqRecorderStop();
    engine.iqRecorderStop();
    EXPECT_FALSE(engine.isIqRecording());
}

// A pipe that nobody reads stands for a disk that is too slow.
TEST_F(EngineRecorderTest, ALostBlockIsLoggedAndTheStreamGoesOn)
{
    const QString pipe = path("pipe");
    ASSERT_EQ(mkfifo(qPrintable(pipe), 0600), 0);
    const int reader = ::open(qPrintable(pipe), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    const test::LogCapture log;
    start();
    ASSERT_TRUE(engine.iqRecorderStart(pipe));
    const QString line =
        "void ZephrinMDSP::dspProcess(std::vector<COMPLEX> &)  failed to write IQ to file";
    for (int blocks = 0; blocks < 1000 && !log.lines().contains(line); ++blocks)
        playTone(1, 0.1);
    EXPECT_TRUE(log.lines().contains(line));
    EXPECT_TRUE(engine.isIqRecording());
    playTone(1, 0.1);

    std::atomic<bool> quit = false;
    std::thread drain([&] {
        std::array<char, 65536> bytes;
        while (!quit) {
            if (::read(reader, bytes.data(), bytes.size()) <= 0)
                std::this_thread::yield();
        }
    });
    engine.iqRecorderStop();
    quit = true;
    drain.join();
    ::close(reader);
}
