// SPDX-License-Identifier: GPL-3.0-or-later
// The program finds, checks and joins its plugin and its device library.
#include "HostProcess.h"

#include "support/Signals.h"

#include <QElapsedTimer>
#include <QFile>
#include <gtest/gtest.h>

namespace
{
using test::HostProcess;

void writeText(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write("no program at all\n");
}

TEST(LoadingTest, WhatIsNoPluginOrLibraryIsNamedWithItsReason)
{
    const struct
    {
        const char *options;
        QStringList named;
    } cases[] = {
        {"--plugin nothing.so", {"--plugin", "nothing.so", "no such file"}},
        {"--plugin text.so", {"--plugin", "text.so", "not a plugin"}},
        {"--plugin " HARDWARE_D2XX, {"--plugin", "libftd2xx.so", "not a plugin"}},
        {"--plugin " OTHER_PLUGIN, {"--plugin", "Some.Other.plugin", "Velmora.VelmoraSDR2.plugin"}},
        {"--d2xx nothing.so", {"--d2xx", "nothing.so"}},
        {"--d2xx text.so", {"--d2xx", "text.so"}},
        {"--d2xx " OTHER_PLUGIN, {"--d2xx", "FT_Read"}},
        {"--d2xx " HARDWARE_D2XX " --scene a.wav", {"--scene", "virtual receiver"}},
        {"--d2xx " HARDWARE_D2XX " --fault none", {"--fault", "virtual receiver"}},
        {"--d2xx " HARDWARE_D2XX " --free-run", {"--free-run", "virtual receiver"}},
        {"--preamp 6.25", {"--preamp", "6.25", "-31.5 to 6"}},
        {"--mode AM --filter -18001:4000", {"--filter", "-18000:18000", "AM"}},
        {"--mode LSB --filter 300:2700", {"--filter", "-10000:0", "LSB"}},
    };
    for (const auto &c : cases) {
        HostProcess host;
        writeText(host.path("text.so"));
        host.run(c.options);
        EXPECT_TRUE(host.ended());
        EXPECT_EQ(host.status(), 2) << c.options;
        for (const QString &text : c.named)
            EXPECT_TRUE(host.errors().contains(text)) << qPrintable(host.errors());
        EXPECT_EQ(host.errors().count('\n'), 1) << qPrintable(host.errors());
    }
}

TEST(LoadingTest, AMissingReceiverIsToldInTime)
{
    HostProcess host;
    QElapsedTimer clock;
    clock.start();
    host.run("--seconds 1 --fault unplug@0,fail:FT_ListDevices");
    EXPECT_EQ(host.status(), 1);
    EXPECT_TRUE(host.errors().contains("velmora-host: no receiver found\n"));
    EXPECT_GT(clock.elapsed(), 2500); // one search more than the first
}

TEST(LoadingTest, AReceiverThatRefusesIsNotTakenForRunning)
{
    const struct
    {
        const char *fault;
        const char *named;
    } cases[] = {
        {"fail:FT_Open", "cannot be opened"},
        {"fail:FT_Purge", "does not start its stream"},
    };
    for (const auto &c : cases) {
        HostProcess host;
        host.run(QString("--seconds 1 --fault ") + c.fault);
        EXPECT_TRUE(host.ended());
        EXPECT_EQ(host.status(), 1) << c.fault;
        EXPECT_TRUE(host.errors().contains(c.named)) << qPrintable(host.errors());
    }
}

TEST(LoadingTest, AnotherLibraryIsReceivedByTheClock)
{
    HostProcess host;
    host.run("--d2xx " HARDWARE_D2XX " --tune 7.105M --seconds 1.5 --out a.wav --report r.json");
    ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
    const auto report = host.report("r.json");
    EXPECT_EQ(report["settings"].toObject()["scene"].toString(), "on the air");
    EXPECT_EQ(report["settings"].toObject()["d2xx"].toString(), HARDWARE_D2XX);
    EXPECT_NEAR(report["iq"].toObject()["seconds"].toDouble(), 1.5, 0.25);
    EXPECT_FALSE(report["iq"].toObject().contains("samples_sent"));
    const auto audio = host.audio("a.wav");
    EXPECT_NEAR(double(audio.size()) / 48000.0, 1.5, 0.25);
    EXPECT_GT(test::rms(audio), 1e-3); // the voice of the built-in band
}
} // namespace
