// SPDX-License-Identifier: GPL-3.0-or-later
// What the program needs is found, checked and joined, or named.
#include "HostProcess.h"

#include "support/Signals.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace
{
using test::HostProcess;

TEST(LoadingTest, WhatCannotBeUsedIsNamedInOneLineWithItsReason)
{
    const struct
    {
        const char *options;
        QStringList named;
    } cases[] = {
        {"--plugin nothing.so", {"--plugin", "nothing.so", "no such file"}},
        {"--plugin " OTHER_PLUGIN, {"--plugin", "Some.Other.plugin", "Velmora.VelmoraSDR2.plugin"}},
        {"--d2xx " OTHER_PLUGIN, {"--d2xx", "FT_Read"}},
        {"--d2xx " HARDWARE_D2XX " --free-run", {"--free-run", "virtual receiver"}},
        {"--mode LSB --filter 300:2700", {"--filter", "-10000:0", "LSB"}},
        {"--scene scene.f64 --scene-rate 192k", {"scene.f64"}}, // empty
        {"--fault sunshine", {"sunshine"}},
        {"--scene scene.f64 --scene-rate 192k --out scene.f64", {"--scene"}},
    };
    for (const auto &c : cases) {
        HostProcess host;
        host.writeScene({});
        host.run(c.options);
        EXPECT_TRUE(host.ended());
        EXPECT_EQ(host.status(), 2) << c.options;
        EXPECT_TRUE(host.errors().startsWith("velmora-host: ")) << c.options;
        for (const QString &text : c.named)
            EXPECT_TRUE(host.errors().contains(text)) << qPrintable(host.errors());
        EXPECT_EQ(host.errors().count('\n'), 1) << qPrintable(host.errors());
    }
}

TEST(LoadingTest, WithoutAFreeRunEitherLibraryIsReceivedByTheClock)
{
    constexpr double kSeconds = 1.5;
    constexpr double kBusyMachine = 0.3; // seconds
    HostProcess hosts[2];
    QElapsedTimer clock;
    clock.start();
    for (HostProcess &host : hosts)
        host.start(QString("--tune 7.105M --seconds 1.5 --out a.wav --report r.json")
            + (&host == hosts ? "" : " --d2xx " HARDWARE_D2XX));
    for (HostProcess &host : hosts) {
        host.wait();
        EXPECT_GT(clock.elapsed(), 1e3 * kSeconds - 100);
        ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
        const auto audio = host.audio("a.wav");
        EXPECT_NEAR(double(audio.size()) / 48000.0, kSeconds, kBusyMachine);
        EXPECT_GT(test::rms(audio), 1e-3); // the voice of the built-in band
        EXPECT_NEAR(host.report("time")["real_time_factor"].toDouble(), 1.0, kBusyMachine);
    }
    const auto settings = hosts[1].report("settings");
    EXPECT_EQ(settings["scene"].toString(), "on the air");
    EXPECT_EQ(settings["d2xx"].toString(), HARDWARE_D2XX);
    EXPECT_FALSE(hosts[1].report("iq").contains("samples_sent"));
}
} // namespace
