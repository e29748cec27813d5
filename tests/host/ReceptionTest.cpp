// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tones.h"

#include "support/Signals.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace
{
using namespace test;

TEST(ReceptionTest, ACarrierIsHeardAtItsDistanceAndNothingIsLost)
{
    constexpr double kLevelDb = 0.1;
    constexpr double kSeconds = 1.0;
    constexpr double kBlock = 512.0; // the engine's, of which the last one is filled up
    const struct
    {
        int rateHz;
        const char *mode;
        double tuneOffsetHz; // from the centre
        double carrierHz;    // from the tuned frequency
    } cases[] = {
        {48000, "USB", 5000, 1000}, {192000, "LSB", 30000, -700}, {3072000, "DSB", 1200000, 1000}};
    for (const auto &c : cases) {
        HostProcess host;
        startReception(host,
            test::tone(int(c.rateHz * kSeconds), (c.tuneOffsetHz + c.carrierHz) / c.rateHz, 0.1),
            QString("--tune %1 --mode %2").arg(14e6 + c.tuneOffsetHz, 0, 'f', 0).arg(c.mode),
            c.rateHz);
        host.wait();
        ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
        const auto heard = host.audio("a.wav");
        EXPECT_NEAR(double(heard.size()) / kAudioRateHz, kSeconds, 0.03); // blocks and filters
        EXPECT_GT(purity(settledLeft(heard), std::abs(c.carrierHz)), kPure) << c.mode;

        const auto iq = host.report("iq");
        EXPECT_EQ(iq["dropped_blocks"].toDouble(-1), 0.0);
        EXPECT_EQ(
            iq["samples_processed"].toDouble(), std::ceil(c.rateHz * kSeconds / kBlock) * kBlock);
        EXPECT_NEAR(iq["input_rms_dbfs"].toDouble(), -20.0, kLevelDb);
        const auto audio = host.report("audio");
        EXPECT_EQ(audio["frames"].toDouble(), double(heard.size()));
        EXPECT_EQ(audio["lost_frames"].toDouble(-1), 0.0);
        EXPECT_EQ(host.report()["ending"].toString(), "scene ended");
    }
}

TEST(ReceptionTest, ASecondStationIsHeardAlong)
{
    constexpr double kToleranceDb = 1.0;
    auto iq = carrier(11000.0, 0.05);       // 1 kHz above A
    test::add(iq, carrier(-28500.0, 0.05)); // 1.5 kHz above B
    HostProcess host;
    receive(host, iq, "--tune 14.01M --mode USB --tune-b 13.97M --volume-b -20");
    const auto left = settledLeft(host.audio("a.wav"));
    EXPECT_NEAR(test::decibels(levelAt(left, 1500.0) / levelAt(left, 1000.0)), -20.0, kToleranceDb);
    EXPECT_TRUE(host.report("settings")["options"].toObject().contains("tune_b_hz"));
}

TEST(ReceptionTest, FreeRunsGiveTheSameFile)
{
    HostProcess hosts[2]; // at once, which varies their threads
    for (HostProcess &host : hosts)
        host.start("--rate 1.536M --tune 7.105M --seconds 2 --free-run --out a.wav");
    for (HostProcess &host : hosts) {
        host.wait();
        ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
        EXPECT_GT(host.audio("a.wav").size(), 1.9 * kAudioRateHz);
    }
    EXPECT_TRUE(hosts[0].bytes("a.wav") == hosts[1].bytes("a.wav"));
}

TEST(ReceptionTest, AFreeRunThatLosesSamplesStillEnds)
{
    HostProcess host;
    host.run("--seconds 2 --free-run --out a.wav --report r.json --fault "
             "torn-read/50,lost-byte@2000x50");
    EXPECT_EQ(host.status(), 0) << qPrintable(host.errors());
    EXPECT_EQ(host.audio("a.wav").size(), 2 * std::size_t(kAudioRateHz));
    EXPECT_EQ(host.report()["ending"].toString(), "duration reached");
}

TEST(ReceptionTest, TheReportTellsHowMuchLaterTheAudioIs)
{
    constexpr double kToleranceMs = 0.4; // a window is 1 ms, the told figure is good to 0.2
    constexpr double kOnsetSeconds = 1.0;
    auto iq = carrier(6000.0, 0.01);
    std::fill_n(iq.begin(), int(kOnsetSeconds * kSceneRateHz), COMPLEX{});
    HostProcess host;
    receive(host, iq, "--tune 14.004M --agc off --agc-gain 0");
    const auto audio = host.audio("a.wav");
    // A filter of linear phase lets half of the amplitude through at the very onset. Two periods
    // of the tone are one window.
    constexpr std::size_t kWindow = 48;
    const auto level = [&](std::size_t at) {
        return test::rms({audio.begin() + long(at), audio.begin() + long(at + kWindow)});
    };
    const double half = level(audio.size() - 4800) / 2.0;
    std::size_t at = 4800;
    while (at + 2 * kWindow < audio.size() && level(at) < half)
        ++at;
    const double onset = double(at + kWindow / 2) / kAudioRateHz;
    const double delayMs = host.report("audio")["delay_ms"].toDouble();
    EXPECT_NEAR(delayMs, 1e3 * (onset - kOnsetSeconds), kToleranceMs);
}

TEST(ReceptionTest, WhatCameBeforeALossOfTheReceiverIsWritten)
{
    HostProcess host;
    host.run("--seconds 60 --out a.wav --report r.json --fault unplug@1");
    EXPECT_EQ(host.status(), 1);
    EXPECT_EQ(host.errors(), "velmora-host: the receiver was lost\n");
    EXPECT_GT(host.audio("a.wav").size(), std::size_t(kAudioRateHz / 4));
    EXPECT_EQ(host.report()["ending"].toString(), "receiver lost");
}

// Of the options that only go through to the device; the others have tests of their own.
TEST(ReceptionTest, EveryToolReachesTheReceiver)
{
    struct Case
    {
        const char *mode;
        const char *tool; // "": what those after it are compared with
    };
    constexpr Case cases[] = {{"USB", ""}, {"USB", "--nb1 --nb1-threshold 1"},
        {"USB", "--nb2 --nb2-threshold 1"}, {"USB", "--nr"}, {"USB", "--anf"}, {"USB", "--apf"},
        {"USB", "--binaural"}, {"USB", "--equalizer 9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9"},
        {"USB", "--agc-gain 20"}, {"USB", "--rit 100"}, {"CW", ""}, {"CW", "--dse"}, {"NFM", ""},
        {"NFM", "--ctcss 100"}, {"NFM", "--deemphasis 750"}, {"DIGU", ""},
        {"DIGU", "--digu-offset 700"}};
    QByteArray plain;
    runSideBySide(
        cases,
        [](HostProcess &host, const Case &c) {
            host.start(
                QString("--seconds 0.5 --free-run --out a.wav --mode %1 %2").arg(c.mode, c.tool));
        },
        [&](HostProcess &host, const Case &c) {
            EXPECT_EQ(host.status(), 0) << qPrintable(host.errors());
            const QByteArray audio = host.bytes("a.wav");
            if (*c.tool == 0)
                plain = audio;
            else
                EXPECT_NE(audio, plain) << c.tool;
        });
}

TEST(ReceptionTest, ARunTellsWhatItsUserMayNotExpectAndNothingElse)
{
    struct Case
    {
        const char *options;
        const char *told; // null: nothing
    };
    constexpr Case cases[] = {
        {"", nullptr},
        {"--center 7.3M", "nothing around --center 7.3M, it goes from 7.07M to 7.13M"},
        {"--rate 384k --center 7.2M --tune 7.3M", "nothing at --tune 7.3M"},
    };
    runSideBySide(
        cases,
        [](HostProcess &host, const Case &c) {
            host.start(QString("--seconds 0.2 --free-run ") + c.options);
        },
        [](HostProcess &host, const Case &c) {
            EXPECT_EQ(host.status(), 0);
            EXPECT_TRUE(c.told ? host.errors().contains(c.told) : host.errors().isEmpty())
                << qPrintable(host.errors());
        });
}
} // namespace
