// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/HostNotchControl.h"

#include "support/LogCapture.h"

#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <limits>

namespace
{
using host::HostNotchControl;
using Filter = HostNotchControl::Filter;

const QStringList kBands{"80M", "40M", "0.7M"};
constexpr std::size_t k40M = 1, kOutside = 3;

/// A settings file that is read back as another program would.
class NotchSettings
{
public:
    void keep(const HostNotchControl &control)
    {
        QSettings settings(m_path, QSettings::IniFormat);
        control.writeSettings(settings);
    }
    void load(HostNotchControl &control)
    {
        QSettings settings(m_path, QSettings::IniFormat);
        control.readSettings(settings);
    }
    void set(const QString &key, const QVariant &value)
    {
        QSettings(m_path, QSettings::IniFormat).setValue("RadioNotchFilters/" + key, value);
    }

private:
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("notch.ini");
};

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
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(control.setFilter(k40M, 8, {250.0, 7.1e6, true}));
    EXPECT_FALSE(control.setFilter(4, 0, {250.0, 7.1e6, true}));
    for (const auto &[width, freq] :
        {std::pair(nan, 7.1e6), {250.0, nan}, {19.0, 7.1e6}, {250.0, -1.0}})
        EXPECT_FALSE(control.setFilter(k40M, 0, {width, freq, true})) << width << " at " << freq;
    EXPECT_FALSE(control.setBandEnabled(4, true));
    EXPECT_EQ(story, (QStringList{"1/7 on 7100000.0 250", "3 on"}));

    story.clear();
    control.resend(k40M);
    control.resend(4);
    ASSERT_EQ(story.size(), 9);
    EXPECT_EQ(story[1], "1/1 off 0.0 100");
    EXPECT_EQ(story[7], "1/7 on 7100000.0 250");
    EXPECT_EQ(story[8], "1 off");
}

TEST(HostNotchControlTest, ComesBackFromTheSettingsByBandName)
{
    constexpr double kOddHz = 7123456.7000000011; // needs all its digits
    NotchSettings file;
    HostNotchControl before(kBands);
    before.setFilter(k40M, 0, {250.5, kOddHz, true});
    before.setFilter(kOutside, 7, {1000.0, 5.0e6, false});
    before.setBandEnabled(k40M, true);
    file.keep(before);

    // Another country has other bands: what it lacks is kept for later.
    HostNotchControl abroad({"60M", "40M"});
    file.load(abroad);
    EXPECT_EQ(abroad.filter(1, 0).freq, kOddHz);
    EXPECT_EQ(abroad.filter(1, 0).width, 250.5);
    EXPECT_TRUE(abroad.filter(1, 0).enable);
    EXPECT_TRUE(abroad.bandEnabled(1));
    EXPECT_EQ(abroad.filter(2, 7).freq, 5.0e6);

    // What is unused again leaves the settings, and reading replaces what is there.
    before.setFilter(k40M, 0, HostNotchControl::kUnused);
    file.keep(before);
    file.load(abroad);
    EXPECT_EQ(abroad.filter(1, 0).freq, 0.0);
    EXPECT_TRUE(abroad.bandEnabled(1));
}

TEST(HostNotchControlTest, WhatIsNoFilterInTheSettingsIsLeftOutWithAWarning)
{
    const std::pair<const char *, QVariant> rows[] = {
        {"40M/filter0", QStringList{"7e6", "250"}},
        {"40M/filter0", QStringList{"seven", "250", "on"}},
        {"40M/filter0", QStringList{"7e6", "inf", "on"}},
        {"40M/filter0", QStringList{"-7e6", "250", "on"}},
        {"40M/filter0", QStringList{"7e6", "250", "maybe"}},
        {"40M/filter0", QByteArray("\0\xff\x80", 3)},
        {"40M/filter8", QStringList{"7e6", "250", "on"}}, // a band has eight
        {"40M/enabled", QStringList{"on", "on"}},
    };
    for (const auto &[key, value] : rows) {
        NotchSettings file;
        file.set(key, value);
        file.set("40M/filter1", QStringList{"7.2e6", "300", "on"});
        HostNotchControl control(kBands);
        const test::LogCapture log;
        file.load(control);
        EXPECT_EQ(log.warnings().size(), 1) << key << " = " << qPrintable(value.toString());
        EXPECT_TRUE(log.warned(key));
        EXPECT_FALSE(control.filter(k40M, 0).enable);
        EXPECT_FALSE(control.bandEnabled(k40M));
        EXPECT_EQ(control.filter(k40M, 1).freq, 7.2e6);
    }
}
