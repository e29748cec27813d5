// SPDX-License-Identifier: GPL-3.0-or-later
// What a run leaves behind beside the audio, and what it does to the input.
#include "Tones.h"

#include "support/Signals.h"
#include "vm_library/source/file/IQFile.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <gtest/gtest.h>

namespace
{
using namespace test;

// In real time at the lowest rate, where the recorder's ring lasts for 0.2 s on a busy machine.
TEST(OutputTest, ARecordingCanBeReceivedWithOrWithoutItsHeader)
{
    constexpr double kToleranceDb = 0.1;
    HostProcess host;
    const auto scene = host.writeScene(test::tone(3 * 48000, 11000.0 / 48000, 0.001));
    host.run(QString("--scene %1 --scene-rate 48k --rate 48k --center 14M --seconds 2 "
                     "--record vsdr --record-path . --report r.json")
                 .arg(scene));
    ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
    const auto recording = host.report("recording");
    EXPECT_EQ(recording["refused_blocks"].toDouble(-1), 0.0);
    const QString file = recording["file"].toString();
    const QString receive = "--scene " + file
        + " --rate 48k --tune 14.01M --free-run --seconds 1.5 --out b.wav --report r.json";

    host.run(receive);
    ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
    EXPECT_GT(purity(settledLeft(host.audio("b.wav")), 1000.0), kPure);
    EXPECT_NEAR(host.report("iq")["input_peak_dbfs"].toDouble(), -60.0, kToleranceDb);

    QFile broken(host.path(file)); // off before its header was written
    ASSERT_TRUE(broken.open(QIODevice::ReadWrite));
    broken.write(
        QByteArray(int(vm::file::IQFile::headerBytes(vm::file::IQFile::VelmoraSDR2)), '\0'));
    broken.close();
    host.run(receive + " --scene-frequency 14M");
    EXPECT_TRUE(host.errors().contains("broken off")) << qPrintable(host.errors());
    EXPECT_GT(purity(settledLeft(host.audio("b.wav")), 1000.0), kPure);
}

TEST(OutputTest, PicturesAreWritten)
{
    HostProcess host;
    receive(host, carrier(11000.0, 0.05),
        "--panorama p.png --waterfall w.png --audio-spectrum s.png --fft-size 2048 --hide-slopes "
        "--fft-interval 10");
    for (const char *name : {"p.png", "w.png", "s.png"})
        EXPECT_EQ(QImage(host.path(name)).size(), QSize(1600, 900)) << name;
    const auto spectrum = host.report("spectrum");
    EXPECT_EQ(spectrum["points"].toDouble(), 2048.0);
    EXPECT_EQ(spectrum["width_hz"].toDouble(), 172000.0); // without the slopes
    EXPECT_GT(spectrum["lines"].toDouble(), 5.0);
}

TEST(OutputTest, CableAndLineOutputGiveTheSameTone)
{
    constexpr double kLost = 0.1; // seconds: the last chunk is not whole
    HostProcess host;
    receive(host, carrier(11000.0, 0.05),
        "--tune 14.01M --vac-out v.wav --vac-rate 44100 --line-out l.wav");
    for (const auto &[file, rateHz] : {std::pair("v.wav", 44100), {"l.wav", 48000}}) {
        const auto audio = host.audio(file, rateHz);
        EXPECT_NEAR(double(audio.size()) / rateHz, 2.0, kLost) << rateHz;
        EXPECT_GT(purity(settledLeft(audio), 1000.0, rateHz), kPure) << rateHz;
    }
}

TEST(OutputTest, TheAutomaticPreampTakesAnOverloadBack)
{
    constexpr double kOverload = 1.5; // 3.5 dB too much, one step of 4 dB is enough
    HostProcess host;
    host.run("--scene-rate 192k --auto-preamp --seconds 3.5 --report r.json --scene "
        + host.writeScene(test::tone(4 * kSceneRateHz, 0.05, kOverload)));
    ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
    const auto preamp = host.report("preamp");
    EXPECT_GT(preamp["overflows"].toDouble(), 8.0);
    EXPECT_EQ(preamp["db"].toDouble(), -4.0);
    EXPECT_EQ(preamp["steps"].toArray().size(), 1);
}
} // namespace
