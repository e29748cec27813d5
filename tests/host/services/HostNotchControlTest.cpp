// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/HostNotchControl.h"

#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>

namespace
{
using host::HostNotchControl;
using Filter = HostNotchControl::Filter;

const QStringList kBands{"80M", "40M", "0.7M"};
constexpr std::size_t k40M = 1, kOutside = 3;

/// Lines such as "1/0 on 7100000 250" and "1 on".
void follow(HostNotchControl &control, QStringList &story)
{
    QObject::connect(&control, &HostNotchControl::paramChanged,
        [&](size_t band, size_t id, bool enable, double freq, double width) {
            story << QString("%1/%2 %3 %4 %5")
                         .arg(band)
                         .arg(id)
                         .arg(enable ? "on" : "off")
                         .arg(freq, 0, 'f', 1)
                         .arg(width);
        });
    QObject::connect(
        &control, &HostNotchControl::enableFiltersChanged, [&](size_t band, bool state) {
            story << QString("%1 %2").arg(band).arg(state ? "on" : "off");
        });
}
} // namespace

TEST(HostNotchControlTest, EachChangeIsToldOnceAndResendTellsAllOfOneBand)
{
    HostNotchControl control(kBands);
    QStringList story;
    follow(control, story);
    EXPECT_EQ(control.bandCount(), 4u);
    for (const bool isNew : {true, false}) {
        EXPECT_TRUE(control.setFilter(k40M, 7, {250.0, 7.1e6, true})) << isNew;
        EXPECT_TRUE(control.setBandEnabled(kOutside, true)) << isNew;
    }
    EXPECT_FALSE(control.setFilter(k40M, 8, {250.0, 7.1e6, true}));
    EXPECT_FALSE(control.setFilter(k40M, 0, {19.0, 7.1e6, true}));
    EXPECT_EQ(story, (QStringList{"1/7 on 7100000.0 250", "3 on"}));

    story.clear();
    control.resend(k40M);
    ASSERT_EQ(story.size(), 9);
    EXPECT_EQ(story[1], "1/1 off 0.0 100");
    EXPECT_EQ(story[7], "1/7 on 7100000.0 250");
    EXPECT_EQ(story[8], "1 off");
}

TEST(HostNotchControlTest, ComesBackFromTheSettingsByBandName)
{
    constexpr double kOddHz = 7123456.7000000011; // needs all its digits
    const QTemporaryDir folder;
    const auto file = [&folder] { // as another program would read it
        return std::make_unique<QSettings>(folder.filePath("notch.ini"), QSettings::IniFormat);
    };
    HostNotchControl before(kBands);
    before.setFilter(k40M, 0, {250.5, kOddHz, true});
    before.setFilter(kOutside, 7, {1000.0, 5.0e6, false});
    before.setBandEnabled(k40M, true);
    before.writeSettings(*file());

    // Another country has other bands: what it lacks is kept for later.
    HostNotchControl abroad({"60M", "40M"});
    abroad.readSettings(*file());
    EXPECT_EQ(abroad.filter(1, 0).freq, kOddHz);
    EXPECT_EQ(abroad.filter(1, 0).width, 250.5);
    EXPECT_TRUE(abroad.filter(1, 0).enable);
    EXPECT_TRUE(abroad.bandEnabled(1));
    EXPECT_EQ(abroad.filter(2, 7).freq, 5.0e6);

    // What is unused again leaves the settings, and reading replaces what is there.
    before.setFilter(k40M, 0, HostNotchControl::kUnused);
    before.writeSettings(*file());
    abroad.readSettings(*file());
    EXPECT_EQ(abroad.filter(1, 0).freq, 0.0);
    EXPECT_TRUE(abroad.bandEnabled(1));
}
