// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tones.h"

#include "settings/OptionTable.h"

#include <QSettings>
#include <gtest/gtest.h>

namespace
{
using namespace test;

// Receives a CW station in tune, which is heard at the pitch that is set.
std::vector<COMPLEX> pitch(HostProcess &host, const QString &options)
{
    receive(host, carrier(10000.0, 0.1), "--tune 14.01M --mode CW --settings s.ini " + options);
    return settledLeft(host.audio("a.wav"));
}

TEST(SettingsTest, StoredValuesHoldAndOptionsHoldForOneRunOnly)
{
    HostProcess host;
    const QString file = host.path("s.ini");
    EXPECT_GT(purity(pitch(host, {}), 700.0), kPure); // the default, which the first run stores
    {
        QSettings stored(file, QSettings::IniFormat);
        EXPECT_EQ(stored.value("ZephrinMOptions/cw_pitch").toInt(), 700);
        EXPECT_FALSE(stored.contains("ZephrinMOptions/SampleRate")); // an option of the run
        stored.setValue("ZephrinMOptions/cw_pitch", 650);
    }
    EXPECT_GT(purity(pitch(host, {}), 650.0), kPure);
    EXPECT_GT(purity(pitch(host, "--cw-tone 900"), 900.0), kPure);
    const QSettings settings(file, QSettings::IniFormat);
    for (const auto &option : host::optionTable()) { // all are keys that the device knows
        const QString key = QString(option.stored).replace("%1", "fast");
        EXPECT_TRUE(key.isEmpty() || settings.contains("ZephrinMOptions/" + key)) << option.name;
    }
    EXPECT_EQ(settings.value("ZephrinMOptions/cw_pitch").toInt(), 650);
}

TEST(SettingsTest, AFileThatCannotBeWrittenIsToldInTheEnd)
{
    HostProcess host;
    host.run("--seconds 0.2 --free-run --settings /proc/s.ini --out a.wav");
    EXPECT_EQ(host.status(), 1);
    EXPECT_GT(host.audio("a.wav").size(), 0u);
    EXPECT_TRUE(host.errors().contains("/proc/s.ini")) << qPrintable(host.errors());
}
} // namespace
