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

class EngineRecorderTest : public EngineTest
{
protected:
    QString path(const char *name) const { return folder.path() + "/" + name; }

    QTemporaryDir folder;
};
} // namespace

TEST_F(EngineRecorderTest, RecordsTheStreamAtItsRate)
{
    constexpr int kHeader = 112; // bytes ahead of the samples
    constexpr int kBlocks = 20;  // they fit into the file's ring
    constexpr int kBytesPerSample = 6;
    constexpr int kData = kBlocks * kBlock * kBytesPerSample;
    constexpr int kLostAtTheEnd = 100; // bytes that the file's ring may keep at a stop
    const test::LogCapture log;
    engine.setSampleRate(96000.0);
    recordIq();
    start();
    engine.setIQFormat(IQFile::VelmoraSDR2);
    EXPECT_FALSE(engine.iqRecorderStart(path("missing/file.wav")));
    EXPECT_FALSE(engine.isIqRecording());
    ASSERT_TRUE(engine.iqRecorderStart(path("first.wav")));
    EXPECT_FALSE(engine.iqRecorderStart(path("second.wav")));
    EXPECT_TRUE(engine.isIqRecording());
    playTone(kBlocks, 1e-3);
    engine.iqRecorderStop();
    engine.iqRecorderStop();
    EXPECT_FALSE(engine.isIqRecording());
    playTone(1, 1e-3); // goes nowhere

    EXPECT_FALSE(QFile::exists(path("second.wav")));
    QFile file(path("first.wav"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_LE(bytes.size(), kHeader + kData);
    ASSERT_GE(bytes.size(), kHeader + kData - kLostAtTheEnd);
    EXPECT_EQ(bytes.mid(36, 4), "vsdr");
    EXPECT_EQ(qFromLittleEndian<quint32>(bytes.constData() + 24), 96000u);
    for (int n = 0; n < kBlock; ++n) { // what the server of the stream gets too: I, 24 bits
        const char *code = bytes.constData() + kHeader + n * kBytesPerSample;
        ASSERT_EQ(qFromLittleEndian<quint16>(code) | qint8(code[2]) * 65536,
            int(iq[std::size_t(n)].re * 2147483647.0) >> 8)
            << n;
    }
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
