// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineTest.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

using EngineRecorderTest = EngineTest;
using vm::file::IQFile;

TEST_F(EngineRecorderTest, RecordsTheStreamAtItsRate)
{
    const QTemporaryDir folder;
    const auto path = [&](const char *name) { return folder.filePath(name); };
    constexpr int kHeader = 112; // bytes ahead of the samples
    constexpr int kBlocks = 20;  // they fit into the file's ring
    constexpr int kBytesPerSample = 6;
    constexpr int kData = kBlocks * kBlock * kBytesPerSample;
    constexpr int kLostAtTheEnd = 100; // bytes that the file's ring may keep at a stop
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
