// SPDX-License-Identifier: GPL-3.0-or-later
// What a run leaves behind beside the audio, and what it does to the input.
#include "Tones.h"

#include "support/FileSizeLimit.h"
#include "support/Signals.h"
#include "vm_library/source/file/IQFile.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <cmath>
#include <gtest/gtest.h>

namespace
{
using namespace test;

constexpr double kPure = 0.999;

// In real time at the lowest rate, where the recorder's ring lasts for 0.2 s on a busy machine.
TEST(OutputTest, ARecordingOfEachLayoutCanBeReceived)
{
    constexpr double kToleranceDb = 0.1;
    constexpr double kAmplitude = 0.001; // -60 dBFS, below full scale with every layout's gain
    const struct
    {
        const char *layout;
        double gainDb;
        const char *options; // what its header does not tell
    } cases[] = {
        {"vsdr", 0.0, ""},
        {"wave", 40.0, "--scene-frequency 14M"},
        {"hdsdr", 30.0, ""},
    };
    for (const auto &c : cases) {
        HostProcess host;
        const QString scene =
            host.writeScene("scene.f64", test::tone(3 * 48000, 11000.0 / 48000, kAmplitude));
        host.run(QString("--scene %1 --scene-rate 48k --rate 48k --center 14M --seconds 2 --record "
                         "%2 --record-path . --report r.json")
                     .arg(scene, c.layout));
        ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
        const auto recording = host.report("r.json")["recording"].toObject();
        EXPECT_EQ(recording["refused_blocks"].toDouble(-1), 0.0) << c.layout;
        EXPECT_NEAR(recording["seconds"].toDouble(), 2.0, 0.2) << c.layout;
        ASSERT_EQ(QDir(host.path(".")).entryList({"velmora-host_ZephrinNANO_*"}).size(), 1);

        host.run(QString("--scene %1 --rate 48k --tune 14.01M --free-run --seconds 1.5 --out b.wav "
                         "--report b.json %2")
                     .arg(recording["file"].toString(), c.options));
        ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
        EXPECT_GT(purity(settledLeft(host.audio("b.wav")), 1000.0), kPure) << c.layout;
        EXPECT_NEAR(host.report("b.json")["iq"].toObject()["input_peak_dbfs"].toDouble(),
            -60.0 + c.gainDb, kToleranceDb)
            << c.layout;

        // One that was cut off is told, and played as far as it goes.
        QFile cut(host.path(recording["file"].toString()));
        ASSERT_TRUE(cut.resize(cut.size() / 2));
        host.run(QString("--scene %1 --rate 48k --center 14M --free-run --report b.json %2")
                     .arg(recording["file"].toString(), c.options));
        EXPECT_EQ(host.status(), 0) << qPrintable(host.errors());
        EXPECT_NEAR(host.report("b.json")["iq"].toObject()["seconds"].toDouble(), 1.0, 0.1);
        const bool hasSize = QString(c.layout) != "vsdr";
        EXPECT_EQ(host.errors().contains("shorter"), hasSize) << qPrintable(host.errors());
    }
}

TEST(OutputTest, ARecordingThatWasBrokenOffIsReceivedAtTheRateOfTheReceiver)
{
    HostProcess host;
    QFile file(host.path("killed.wav"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(int(vm::file::IQFile::headerBytes(vm::file::IQFile::VelmoraSDR2)),
        '\0')); // where the header would have been written at the end
    for (const COMPLEX &sample : test::tone(2 * 48000, 1000.0 / 48000, 0.1))
        for (const double part : {sample.re, sample.im}) {
            const auto code = qint32(part * 8388607.0);
            file.write(reinterpret_cast<const char *>(&code), 3);
        }
    file.close();
    host.run(
        "--scene killed.wav --scene-frequency 14M --rate 48k --tune 14M --free-run --out b.wav "
        "--seconds 1.5");
    ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
    EXPECT_TRUE(host.errors().contains("broken off")) << qPrintable(host.errors());
    EXPECT_GT(purity(settledLeft(host.audio("b.wav")), 1000.0), kPure);
}

TEST(OutputTest, AFullDiskIsToldOfEachFileAndFailsTheRun)
{
    HostProcess host;
    host.run("--free-run --seconds 0.2 --report r.json");
    ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
    const QByteArray before = host.bytes("r.json");
    {
        const FileSizeLimit limit(1000);
        host.run("--free-run --seconds 0.5 --out a.wav --vac-out v.wav --report r.json");
    }
    EXPECT_TRUE(host.ended());
    EXPECT_EQ(host.status(), 1);
    for (const char *file : {"a.wav", "v.wav", "r.json"})
        EXPECT_EQ(host.errors().count(QString(file) + ": "), 1) << qPrintable(host.errors());
    EXPECT_EQ(host.audio("a.wav").size(), (1000u - 92u) / 8u);
    EXPECT_EQ(host.bytes("r.json"), before);
}

TEST(OutputTest, PicturesAreWritten)
{
    HostProcess host;
    receive(host, carrier(11000.0, 0.05),
        "--panorama p.png --waterfall w.png --audio-spectrum s.png --fft-size 2048 --hide-slopes "
        "--fft-interval 10");
    for (const char *name : {"p.png", "w.png", "s.png"})
        EXPECT_EQ(QImage(host.path(name)).size(), QSize(1600, 900)) << name;
    const auto spectrum = host.report("r.json")["spectrum"].toObject();
    EXPECT_EQ(spectrum["points"].toDouble(), 2048.0);
    EXPECT_EQ(spectrum["width_hz"].toDouble(), 172000.0); // without the slopes
    EXPECT_GT(spectrum["lines"].toDouble(), 5.0);
}

TEST(OutputTest, CableAndLineOutputGiveTheSameTone)
{
    constexpr double kLost = 0.1; // seconds: the last chunk is not whole
    for (const int rateHz : {8000, 44100, 192000}) {
        HostProcess host;
        receive(host, carrier(11000.0, 0.05),
            QString("--tune 14.01M --vac-out v.wav --vac-rate %1 --line-out l.wav").arg(rateHz));
        const auto cable = host.audio("v.wav", rateHz);
        EXPECT_NEAR(double(cable.size()) / rateHz, 2.0, kLost) << rateHz;
        EXPECT_GT(purity(settledLeft(cable), 1000.0, rateHz), kPure) << rateHz;
        const auto line = host.audio("l.wav");
        EXPECT_NEAR(double(line.size()) / kAudioRateHz, 2.0, kLost) << rateHz;
        EXPECT_GT(purity(settledLeft(line), 1000.0), kPure) << rateHz;
    }
}

TEST(OutputTest, ThePreampSetsTheLevelAtTheConverterAndNotAfterIt)
{
    constexpr double kToleranceDb = 0.1;
    const auto overload = carrier(11000.0, 1.5);
    for (const int db : {0, -10}) {
        HostProcess host;
        receive(host, overload, QString("--preamp %1").arg(db));
        const auto iq = host.report("r.json")["iq"].toObject();
        EXPECT_EQ(iq["clipped_samples"].toDouble() > 0.0, db == 0);
        if (db < 0) {
            EXPECT_NEAR(iq["input_rms_dbfs"].toDouble(), decibels(1.5), kToleranceDb);
        }
    }
}

TEST(OutputTest, TheAutomaticPreampTakesAnOverloadBack)
{
    HostProcess host;
    const auto loud = host.writeScene("scene.f64", test::tone(4 * kSceneRateHz, 0.05, 1.5));
    host.run(QString("--scene %1 --scene-rate 192k --auto-preamp --seconds 3.5 --report r.json")
                 .arg(loud));
    ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
    const auto preamp = host.report("r.json")["preamp"].toObject();
    EXPECT_GT(preamp["overflows"].toDouble(), 8.0);
    EXPECT_EQ(preamp["db"].toDouble(), -4.0); // 1.5 is 3.5 dB too much, and one step is enough
    EXPECT_EQ(preamp["steps"].toArray().size(), 1);
}
} // namespace
