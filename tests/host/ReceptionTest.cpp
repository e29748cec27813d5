// SPDX-License-Identifier: GPL-3.0-or-later
#include "HostProcess.h"
#include "Tones.h"

#include "support/Signals.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QThread>
#include <algorithm>
#include <cmath>
#include <csignal>
#include <gtest/gtest.h>

namespace
{
using test::carrier;
using test::HostProcess;
using test::kAudioRateHz;
using test::kCenterHz;
using test::kSceneRateHz;
using test::levelAt;
using test::purity;
using test::receive;
using test::settledLeft;

/// A scene with one carrier of -20 dBFS.
QString carrierScene(HostProcess &host, int rateHz, double offsetHz, double seconds)
{
    const auto iq = test::tone(int(rateHz * seconds), offsetHz / rateHz, 0.1);
    return QString("--scene %1 --scene-rate %2 --scene-frequency %3 --rate %2 ")
        .arg(host.writeScene("scene.f64", iq))
        .arg(rateHz)
        .arg(kCenterHz, 0, 'f', 0);
}

struct ToneCase
{
    int rateHz;
    const char *mode;
    double tuneOffsetHz; // from the centre
    double carrierHz;    // from the tuned frequency
};

std::ostream &operator<<(std::ostream &out, const ToneCase &c)
{
    return out << c.mode << " at " << c.rateHz << " Hz, carrier at " << c.carrierHz << " Hz";
}

class ReceptionToneTest : public testing::TestWithParam<ToneCase>
{ };

TEST_P(ReceptionToneTest, ACarrierIsHeardAtItsDistanceAndNothingIsLost)
{
    constexpr double kPure = 0.999; // unwanted parts 27 dB down or more
    constexpr double kLevelDb = 0.1;
    constexpr double kSeconds = 2.0;
    constexpr double kLargestRestSamples = 65536; // the credit that may be on its way in the end
    const auto &c = GetParam();
    HostProcess host;
    host.run(carrierScene(host, c.rateHz, c.tuneOffsetHz + c.carrierHz, kSeconds)
        + QString("--tune %1 --mode %2 --free-run --out a.wav --report r.json")
              .arg(kCenterHz + c.tuneOffsetHz, 0, 'f', 0)
              .arg(c.mode));
    ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());

    const auto audio = host.audio("a.wav");
    EXPECT_NEAR(double(audio.size()) / kAudioRateHz, kSeconds, 0.03); // windows, blocks and filters
    EXPECT_GT(purity(settledLeft(audio), std::abs(c.carrierHz)), kPure);

    const auto report = host.report("r.json");
    const auto iq = report["iq"].toObject();
    EXPECT_EQ(iq["dropped_blocks"].toDouble(-1), 0.0);
    EXPECT_GE(iq["samples_sent"].toDouble(), c.rateHz * kSeconds);
    EXPECT_LT(iq["samples_sent"].toDouble(), c.rateHz * kSeconds + kLargestRestSamples);
    constexpr double kBlock = 512.0; // the engine's, of which the last one is filled up
    EXPECT_EQ(iq["samples_processed"].toDouble(), std::ceil(c.rateHz * kSeconds / kBlock) * kBlock);
    EXPECT_NEAR(iq["input_rms_dbfs"].toDouble(), -20.0, kLevelDb);
    EXPECT_EQ(report["audio"].toObject()["frames"].toDouble(), double(audio.size()));
    EXPECT_EQ(report["audio"].toObject()["short_blocks"].toDouble(-1), 0.0);
    EXPECT_EQ(report["audio"].toObject()["lost_frames"].toDouble(-1), 0.0);
    EXPECT_EQ(report["ending"].toString(), "scene ended");
    const auto cpu = report["time"].toObject()["cpu_seconds_per_iq_second"].toObject();
    for (const char *thread : {"engine", "reader", "virtual_receiver", "main"})
        EXPECT_GT(cpu[thread].toDouble(), 0.0) << thread;
}

INSTANTIATE_TEST_SUITE_P(RatesAndModes, ReceptionToneTest,
    testing::Values(ToneCase{48000, "USB", 5000, 1000}, ToneCase{192000, "LSB", 30000, -700},
        ToneCase{3072000, "DSB", 1200000, 1000}));

TEST(ReceptionTest, ASecondStationIsHeardAlong)
{
    constexpr double kEqualDb = 1.0;
    constexpr double kAbsentDb = -40.0;
    auto iq = carrier(11000.0, 0.05);       // 1 kHz above A
    test::add(iq, carrier(-28500.0, 0.05)); // 1.5 kHz above B
    const struct
    {
        const char *options;
        double lowestDb; // B's tone against A's
        double highestDb;
    } cases[] = {
        {"", -400.0, kAbsentDb},
        {"--tune-b 13.97M", -kEqualDb, kEqualDb},
        {"--tune-b 13.97M --volume-b -20", -20.0 - kEqualDb, -20.0 + kEqualDb},
    };
    for (const auto &c : cases) {
        HostProcess host;
        receive(host, iq, QString("--tune 14.01M --mode USB ") + c.options);
        const auto left = settledLeft(host.audio("a.wav"));
        const double difference = test::decibels(levelAt(left, 1500.0) / levelAt(left, 1000.0));
        EXPECT_GE(difference, c.lowestDb) << c.options;
        EXPECT_LE(difference, c.highestDb) << c.options;
        const auto options = host.report("r.json")["settings"].toObject()["options"].toObject();
        EXPECT_EQ(options.contains("tune_b_hz"), QString(c.options).contains("--tune-b"));
    }
}

TEST(ReceptionTest, FreeRunsGiveTheSameFile)
{
    constexpr int kRuns = 2;
    for (const char *rate : {"192k", "1.536M"}) {
        HostProcess host;
        for (int i = 0; i < kRuns; ++i) {
            host.run(QString("--rate %1 --tune 7.105M --seconds 2 --free-run --out %2.wav")
                         .arg(rate)
                         .arg(i));
            ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
            EXPECT_GT(host.audio(QString("%1.wav").arg(i)).size(), 1.9 * kAudioRateHz);
            EXPECT_TRUE(host.bytes("0.wav") == host.bytes(QString("%1.wav").arg(i))) << rate;
        }
    }
}

TEST(ReceptionTest, AFreeRunThatLosesSamplesStillEnds)
{
    for (const char *fault : {"torn-read/50", "lost-byte@2000x50", "random:3:0.01"}) {
        HostProcess host;
        host.run(QString("--seconds 2 --free-run --out a.wav --report r.json --fault ") + fault);
        EXPECT_EQ(host.status(), 0) << fault << qPrintable(host.errors());
        EXPECT_EQ(host.audio("a.wav").size(), 2 * std::size_t(kAudioRateHz)) << fault;
        EXPECT_EQ(host.report("r.json")["ending"].toString(), "duration reached") << fault;
    }
}

TEST(ReceptionTest, TheReportTellsHowMuchLaterTheAudioIs)
{
    constexpr double kToleranceMs = 0.4; // a window is 1 ms, the told figure is good to 0.2
    constexpr double kOnsetSeconds = 1.0;
    for (const int rateHz : {48000, 192000}) {
        auto iq = test::tone(2 * rateHz, 6000.0 / rateHz, 0.01);
        std::fill_n(iq.begin(), int(kOnsetSeconds * rateHz), COMPLEX{});
        HostProcess host;
        host.run(QString("--scene %1 --scene-rate %2 --scene-frequency 14M --rate %2 --tune "
                         "14.004M --agc off --agc-gain 0 --free-run --out a.wav --report r.json")
                     .arg(host.writeScene("scene.f64", iq))
                     .arg(rateHz));
        ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
        const auto audio = host.audio("a.wav");
        // A filter of linear phase lets half of the amplitude through at the very onset. Two
        // periods of the tone are one window.
        constexpr std::size_t kWindow = 48;
        const auto level = [&](std::size_t at) {
            return test::rms({audio.begin() + long(at), audio.begin() + long(at + kWindow)});
        };
        const double half = level(audio.size() - 4800) / 2.0;
        std::size_t at = 4800;
        while (at + 2 * kWindow < audio.size() && level(at) < half)
            ++at;
        const double onset = double(at + kWindow / 2) / kAudioRateHz;
        const double delayMs = host.report("r.json")["audio"].toObject()["delay_ms"].toDouble();
        EXPECT_NEAR(delayMs, 1e3 * (onset - kOnsetSeconds), kToleranceMs) << rateHz;
    }
}

TEST(ReceptionTest, RealTimeTakesItsTime)
{
    HostProcess host;
    QElapsedTimer clock;
    clock.start();
    host.run("--seconds 2 --out a.wav --report r.json");
    ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
    EXPECT_GT(clock.elapsed(), 1900);
    const auto report = host.report("r.json");
    EXPECT_NEAR(double(host.audio("a.wav").size()), 2.0 * kAudioRateHz, 0.1 * kAudioRateHz);
    EXPECT_NEAR(report["time"].toObject()["real_time_factor"].toDouble(), 1.0, 0.25);
}

TEST(ReceptionTest, AnInterruptStillCompletesTheFiles)
{
    HostProcess hosts[2];
    for (HostProcess &host : hosts)
        host.start("--seconds 60 --out a.wav --report r.json");
    constexpr qint64 kEnough = qint64(kAudioRateHz / 2) * 8 + 1000; // half a second and a header
    const auto has = [](HostProcess &host) { return QFileInfo(host.path("a.wav")).size(); };
    for (int i = 0; i < 300 && std::min(has(hosts[0]), has(hosts[1])) < kEnough; ++i)
        QThread::msleep(100);
    kill(pid_t(hosts[0].id()), SIGINT);
    kill(pid_t(hosts[1].id()), SIGHUP);
    for (HostProcess &host : hosts) {
        host.wait();
        ASSERT_TRUE(host.ended());
        EXPECT_EQ(host.status(), 0) << qPrintable(host.errors());
        EXPECT_GT(host.audio("a.wav").size(), std::size_t(kAudioRateHz / 2));
        EXPECT_EQ(host.report("r.json")["ending"].toString(), "interrupted");
    }
}

TEST(ReceptionTest, ThePitchFollowsShiftAndOffset)
{
    constexpr double kPure = 0.999;
    const struct
    {
        const char *options;
        double pitchHz; // of a carrier 1 kHz above --tune
    } cases[] = {
        {"--mode USB --rit 100", 900.0},
        {"--mode DIGU", 2500.0},
        {"--mode DIGU --digu-offset 700", 1700.0},
        {"--mode DIGL", -1200.0},
        {"--mode DIGL --digl-offset 2000", -1000.0},
    };
    for (const auto &c : cases) {
        HostProcess host;
        receive(host, carrier(11000.0, 0.1), QString("--tune 14.01M ") + c.options);
        const auto left = settledLeft(host.audio("a.wav"));
        EXPECT_GT(purity(left, std::abs(c.pitchHz)), kPure) << c.options;
    }
}

// Of the options that only go through to the device; the others have tests of their own.
TEST(ReceptionTest, EveryToolReachesTheReceiver)
{
    const struct
    {
        const char *mode;
        const char *tool;
    } cases[] = {
        {"USB", "--nb1 --nb1-threshold 1"},
        {"USB", "--nb2 --nb2-threshold 1"},
        {"USB", "--nr"},
        {"USB", "--anf"},
        {"USB", "--apf"},
        {"CW", "--dse"},
        {"USB", "--binaural"},
        {"USB", "--equalizer 9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9"},
        {"NFM", "--ctcss 100"},
        {"USB", "--volume -6"},
        {"USB", "--agc-gain 20"},
    };
    HostProcess host;
    QMap<QString, QByteArray> plain;
    for (const auto &c : cases) {
        const auto audio = [&](const QString &options) {
            host.run(QString("--seconds 0.5 --free-run --out a.wav --mode ") + c.mode + options);
            EXPECT_EQ(host.status(), 0) << qPrintable(host.errors());
            return host.bytes("a.wav");
        };
        if (!plain.contains(c.mode))
            plain[c.mode] = audio({});
        EXPECT_NE(audio(QString(" ") + c.tool), plain[c.mode]) << c.tool;
    }
    host.run("--seconds 0.5 --free-run --out a.wav --agc-gain 60");
    EXPECT_EQ(host.bytes("a.wav"), plain["USB"]); // the host's own ceiling
}

/// A carrier at 10 kHz whose phase swings by a tone: 2.5 kHz deviation at 1 kHz.
std::vector<COMPLEX> narrowFm()
{
    constexpr double kToneHz = 1000.0;
    constexpr double kIndex = 2.5;
    std::vector<COMPLEX> iq(2 * kSceneRateHz);
    for (int n = 0; n < 2 * kSceneRateHz; ++n) {
        const double time = double(n) / kSceneRateHz;
        const double phase =
            2.0 * M_PI * 10000.0 * time + kIndex * std::sin(2.0 * M_PI * kToneHz * time);
        iq[std::size_t(n)] = {0.1 * std::cos(phase), 0.1 * std::sin(phase)};
    }
    return iq;
}

TEST(ReceptionTest, TheAudioOfFilesIsShaped)
{
    constexpr double kToleranceDb = 0.3;
    HostProcess host;
    const auto audio = [&host](const QString &options) {
        receive(host, narrowFm(), "--tune 14.01M --mode NFM --line-out l.wav " + options);
        return host.audio("a.wav");
    };
    const auto plain = audio({});
    const auto plainLine = host.audio("l.wav");
    const auto inverted = audio("--invert");
    ASSERT_EQ(plain.size(), inverted.size());
    for (std::size_t i = 0; i < plain.size(); ++i)
        ASSERT_EQ(inverted[i].re, -plain[i].re) << i;
    EXPECT_EQ(host.audio("l.wav").at(24000).re, -plainLine.at(24000).re);
    const auto soft = settledLeft(audio("--deemphasis 750"));
    EXPECT_NEAR(test::decibels(levelAt(soft, 1000.0) / levelAt(settledLeft(plain), 1000.0)), -13.7,
        kToleranceDb); // of an RC low-pass at 1 kHz
}

TEST(ReceptionTest, TheStandardOutputTakesTheAudio)
{
    HostProcess host;
    host.run("--seconds 0.5 --free-run --out -");
    EXPECT_EQ(host.status(), 0) << qPrintable(host.errors());
    EXPECT_TRUE(host.output().startsWith("RIFF"));
    constexpr double kBytes = 0.5 * 48000 * 8; // frames of two floats
    EXPECT_NEAR(host.output().size(), kBytes, 0.05 * kBytes);
    EXPECT_TRUE(host.errors().contains("Received")); // not among the samples
}

TEST(ReceptionTest, APlainRunHasNothingToSay)
{
    HostProcess host;
    host.run("--seconds 0.5 --free-run");
    EXPECT_EQ(host.errors(), "");
    host.run("--seconds 0.5 --free-run --verbose");
    EXPECT_TRUE(host.errors().contains("mLenght != lenght")) << qPrintable(host.errors());
}

TEST(ReceptionTest, APlaceWhereTheSceneHasNothingIsTold)
{
    const struct
    {
        const char *options;
        const char *told; // null: nothing
    } cases[] = {
        {"--center 7.3M", "nothing around --center 7.3M, it goes from 7.07M to 7.13M"},
        {"--rate 384k --center 7.2M --tune 7.3M", "nothing at --tune 7.3M"},
        {"--center 7.2M --rate 384k --tune 7.105M", nullptr},
        {"--scene a.band --scene-rate 48k", "--scene-rate does nothing"},
    };
    HostProcess host;
    QFile band(host.path("a.band"));
    ASSERT_TRUE(band.open(QIODevice::WriteOnly));
    band.write("band centre=7.1M\nstation offset=0 level=-40 mode=carrier\n");
    band.close();
    for (const auto &c : cases) {
        host.run(QString("--seconds 0.2 --free-run ") + c.options);
        EXPECT_EQ(host.status(), 0);
        EXPECT_TRUE(c.told ? host.errors().contains(c.told) : host.errors().isEmpty())
            << qPrintable(host.errors());
    }
}

TEST(ReceptionTest, ADeviceThatIsPulledOutEndsTheRun)
{
    HostProcess host;
    host.run("--seconds 60 --out a.wav --report r.json --fault unplug@1");
    EXPECT_EQ(host.status(), 1);
    EXPECT_EQ(host.errors(), "velmora-host: the receiver was lost\n");
    EXPECT_GT(host.audio("a.wav").size(), std::size_t(kAudioRateHz / 4));
    EXPECT_EQ(host.report("r.json")["ending"].toString(), "receiver lost");
}

TEST(ReceptionTest, WhatCannotBeUsedIsNamedInOneLine)
{
    const struct
    {
        const char *options;
        const char *named;
    } cases[] = {
        {"--rate 1", "--rate"},
        {"--scene nothing.wav", "nothing.wav"},
        {"--scene nothing.band", "nothing.band"},
        {"--scene empty.f64 --scene-rate 192k", "empty.f64"},
        {"--fault sunshine", "sunshine"},
        {"--out no/such/folder/a.wav", "no/such/folder/a.wav"},
        {"--report no/such/folder/r.json", "no/such/folder/r.json"},
        {"--record wave --record-path no/such/folder", "no/such/folder"},
        {"--scene empty.f64 --scene-rate 192k --out empty.f64", "--scene"},
    };
    for (const auto &c : cases) {
        HostProcess host;
        host.writeScene("empty.f64", {});
        host.run(QString("--seconds 1 ") + c.options);
        EXPECT_EQ(host.status(), 2) << c.options;
        EXPECT_TRUE(host.errors().startsWith("velmora-host: ")) << c.options;
        EXPECT_TRUE(host.errors().contains(c.named)) << qPrintable(host.errors());
        EXPECT_EQ(host.errors().count('\n'), 1) << qPrintable(host.errors());
    }
}
} // namespace
