// SPDX-License-Identifier: GPL-3.0-or-later
// What a run leaves behind beside the audio, and what it does to the input.
#include "Tones.h"

#include "support/FileSizeLimit.h"
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
        {"wave", 40.0, " --scene-frequency 14M"},
        {"hdsdr", 30.0, ""},
    };
    HostProcess hosts[std::size(cases)];
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const auto scene = hosts[i].writeScene(test::tone(3 * 48000, 11000.0 / 48000, kAmplitude));
        hosts[i].start(QString("--scene %1 --scene-rate 48k --rate 48k --center 14M --seconds 2 "
                               "--record %2 --record-path . --report r.json")
                           .arg(scene, cases[i].layout));
    }
    const QString receive = "--scene %1 --rate 48k --tune 14.01M --free-run --seconds 1.5 --out "
                            "b.wav --report r.json";
    QString file;
    for (std::size_t i = std::size(cases); i-- > 0;) {
        const auto &c = cases[i];
        HostProcess &host = hosts[i];
        host.wait();
        ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
        const auto recording = host.report("recording");
        EXPECT_EQ(recording["refused_blocks"].toDouble(-1), 0.0) << c.layout;
        EXPECT_NEAR(recording["seconds"].toDouble(), 2.0, 0.2) << c.layout;

        file = recording["file"].toString();
        host.run(receive.arg(file) + c.options);
        ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
        EXPECT_GT(purity(settledLeft(host.audio("b.wav")), 1000.0), kPure) << c.layout;
        EXPECT_NEAR(host.report("iq")["input_peak_dbfs"].toDouble(), -60.0 + c.gainDb, kToleranceDb)
            << c.layout;
    }
    // One that was broken off, before its header was written.
    QFile broken(hosts[0].path(file));
    ASSERT_TRUE(broken.open(QIODevice::ReadWrite));
    broken.write(
        QByteArray(int(vm::file::IQFile::headerBytes(vm::file::IQFile::VelmoraSDR2)), '\0'));
    broken.close();
    hosts[0].run(receive.arg(file) + " --scene-frequency 14M");
    EXPECT_TRUE(hosts[0].errors().contains("broken off")) << qPrintable(hosts[0].errors());
    EXPECT_GT(purity(settledLeft(hosts[0].audio("b.wav")), 1000.0), kPure);
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
    const auto spectrum = host.report("spectrum");
    EXPECT_EQ(spectrum["points"].toDouble(), 2048.0);
    EXPECT_EQ(spectrum["width_hz"].toDouble(), 172000.0); // without the slopes
    EXPECT_GT(spectrum["lines"].toDouble(), 5.0);
}

TEST(OutputTest, CableAndLineOutputGiveTheSameTone)
{
    constexpr double kLost = 0.1; // seconds: the last chunk is not whole
    constexpr int kRatesHz[] = {8000, 44100, 192000};
    runSideBySide(
        kRatesHz,
        [](HostProcess &host, int rateHz) {
            startReception(host, carrier(11000.0, 0.05),
                QString("--tune 14.01M --vac-out v.wav --vac-rate %1 --line-out l.wav")
                    .arg(rateHz));
        },
        [](HostProcess &host, int cableHz) {
            for (const auto &[file, rateHz] : {std::pair("v.wav", cableHz), {"l.wav", 48000}}) {
                const auto audio = host.audio(file, rateHz);
                EXPECT_NEAR(double(audio.size()) / rateHz, 2.0, kLost) << rateHz;
                EXPECT_GT(purity(settledLeft(audio), 1000.0, rateHz), kPure) << rateHz;
            }
        });
}

TEST(OutputTest, ThePreampIsInFrontOfTheConverterAndTheAutomaticOneTakesAnOverloadBack)
{
    constexpr double kToleranceDb = 0.1;
    constexpr double kOverload = 1.5; // 3.5 dB too much, one step of 4 dB is enough
    HostProcess automatic;
    automatic.start(QString("--scene %1 --scene-rate 192k --auto-preamp --seconds 3.5 --report "
                            "r.json")
                        .arg(automatic.writeScene(test::tone(4 * kSceneRateHz, 0.05, kOverload))));
    for (const int db : {0, -10}) {
        HostProcess host;
        receive(host, carrier(11000.0, kOverload), QString("--preamp %1").arg(db));
        const auto iq = host.report("iq");
        EXPECT_EQ(iq["clipped_samples"].toDouble() > 0.0, db == 0);
        if (db < 0) {
            EXPECT_NEAR(iq["input_rms_dbfs"].toDouble(), decibels(kOverload), kToleranceDb);
        }
    }
    automatic.wait();
    ASSERT_EQ(automatic.status(), 0) << qPrintable(automatic.errors());
    const auto preamp = automatic.report("preamp");
    EXPECT_GT(preamp["overflows"].toDouble(), 8.0);
    EXPECT_EQ(preamp["db"].toDouble(), -4.0);
    EXPECT_EQ(preamp["steps"].toArray().size(), 1);
}
} // namespace
