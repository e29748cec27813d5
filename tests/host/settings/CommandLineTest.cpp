// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/CommandLine.h"

#include <gtest/gtest.h>

namespace
{
using host::HostSettings;

auto read(const QString &arguments)
{
    return host::readCommandLine(("velmora-host " + arguments).split(' ', Qt::SkipEmptyParts));
}

HostSettings settingsOf(const QString &options)
{
    const auto result = read("--headless " + options);
    if (const auto *error = std::get_if<host::UsageError>(&result))
        ADD_FAILURE() << qPrintable(options) << ": " << qPrintable(error->text);
    const auto *settings = std::get_if<HostSettings>(&result);
    return settings ? *settings : HostSettings{};
}

TEST(CommandLineTest, AnOptionGoesToItsPlace)
{
    const HostSettings s = settingsOf(
        "--plugin p --out o --rate 1.536M --mode lsb --notch 7.11M:250 --notch 7.12M --vac-out v "
        "--vac-rate 44.1k --record wave --record-path f --agc slow --agc fast");
    EXPECT_EQ((QStringList{s.pluginFile, s.outFile, s.vac.file, s.recording.folder}).join(' '),
        "p o v f");
    EXPECT_EQ(s.deviceRateHz, 1536000);
    EXPECT_EQ(s.mode->mode, host::Mode::LSB);
    ASSERT_EQ(s.notches.size(), 2u);
    EXPECT_EQ(s.notches[0].widthHz, 250.0);
    EXPECT_EQ(s.notches[1].frequencyHz, 7.12e6);
    EXPECT_EQ(s.vac.rateHz, 44100);
    EXPECT_EQ(s.recording.format, vm::file::IQFile::StandartWave);
    EXPECT_EQ(s.given["agc"], "fast");
    EXPECT_FALSE(s.given.contains("nr"));
}

TEST(CommandLineTest, TheCentreFollowsWhatIsKnown)
{
    const struct
    {
        const char *options;
        double center;
        double tune;
    } cases[] = {
        {"", 7.1e6, 7.105e6}, // a station of the built-in band
        {"--mode CW", 7.1e6, 7.085e6},
        {"--center 14M --tune 14.01M", 14e6, 14.01e6},
        {"--scene a.wav --scene-frequency 3.6M --tune 3.61M", 3.6e6, 3.61e6},
        {"--tune 7.196M", 7.1e6, 7.196e6},
        {"--tune 7.1961M", 7.1961e6, 7.1961e6},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(settingsOf(c.options).centerHz, c.center) << c.options;
        EXPECT_EQ(settingsOf(c.options).tuneHz, c.tune) << c.options;
    }
}

TEST(CommandLineTest, ASlipIsNamedInOneLine)
{
    const std::pair<const char *, const char *> cases[] = {
        {"extra", "extra"},
        {"--rate 44100", "48k, 96k, 192k, 384k, 768k, 1.536M, 1.92M, 2.56M, 3.072M"},
        {"--center 801M", "--center: 801M is outside 0 to 800M"},
        {"--center 7M --tune 7.2M", "--tune"},
        {"--filter 2700:300", "does not rise"},
        {"--notch 7.11M:19", "20 to 20k"},
        {"--scene-rate 192k", "--scene-rate needs --scene"},
        {"--agc off --agc-hang 10", "--agc off"},
        {"--device moon", "--device: 'moon'"},
        {"--device usb --d2xx l.so", "--device and --d2xx"},
    };
    for (const auto &[options, named] : cases) {
        const auto result = read(QString("--headless ") + options);
        const auto *error = std::get_if<host::UsageError>(&result);
        ASSERT_TRUE(error) << options;
        EXPECT_TRUE(error->text.contains(named)) << options << ": " << qPrintable(error->text);
        EXPECT_FALSE(error->text.contains('\n')) << options;
    }
}

TEST(CommandLineTest, WhatHasNoEffectIsTold)
{
    const struct
    {
        const char *options;
        const char *told; // null: nothing
    } cases[] = {
        {"--ctcss 100", "--ctcss does nothing in USB. Only in NFM."},
        {"--fft-size 512 --waterfall w", nullptr},
    };
    for (const auto &c : cases) {
        const QString notices = settingsOf(c.options).notices.join('\n');
        EXPECT_TRUE(c.told ? notices.contains(c.told) : notices.isEmpty()) << qPrintable(notices);
    }
}

TEST(CommandLineTest, HelpHasRangeAndDefaultAndModeOfAnOption)
{
    const auto result = read("-h");
    const QString help = std::get<host::Information>(result).text.simplified();
    for (const char *text : {"--nr-taps <N> Length of its filter in samples, 1 to 257.",
             "Gain control: off, long, slow, med, fast or user. Default med. Not in NFM, WFM."})
        EXPECT_TRUE(help.contains(text)) << text;
}
} // namespace
