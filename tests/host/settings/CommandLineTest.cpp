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

TEST(CommandLineTest, EachFileGoesToItsPlace)
{
    const HostSettings s =
        settingsOf("--plugin p --d2xx d --settings s --eeprom e --out o --vac-out "
                   "v --line-out l --panorama n --waterfall w --audio-spectrum a "
                   "--report r --record vsdr --record-path f");
    EXPECT_EQ((QStringList{s.pluginFile, s.d2xxFile, s.settingsFile, s.eepromFile, s.outFile,
                   s.vac.file, s.lineOut.file, s.spectrum.panoramaFile, s.spectrum.waterfallFile,
                   s.spectrum.audioSpectrumFile, s.reportFile, s.recording.folder})
                  .join(' '),
        "p d s e o v l n w a r f");
}

TEST(CommandLineTest, AnOptionGoesToItsPlace)
{
    const struct
    {
        const char *options;
        bool (*isThere)(const HostSettings &);
    } cases[] = {
        {"--scene s --scene-format S16 --scene-rate 1k",
            [](const HostSettings &s) { return s.sceneFormat == "s16" && s.sceneRateHz == 1e3; }},
        {"--rate 1.536M", [](const HostSettings &s) { return s.deviceRateHz == 1536000; }},
        {"--mode lsb", [](const HostSettings &s) { return s.mode->mode == host::Mode::LSB; }},
        {"--mode AM", [](const HostSettings &s) { return s.filterLowHz == -s.filterHighHz; }},
        {"--filter -3k:-2 --mode LSB",
            [](const HostSettings &s) { return s.filterLowHz == -3e3 && s.filterHighHz == -2.0; }},
        {"--notch 7.11M:250 --notch 7.12M",
            [](const HostSettings &s) {
                return s.notches.size() == 2 && s.notches[0].frequencyHz == 7.11e6
                    && s.notches[0].widthHz == 250.0 && s.notches[1].widthHz == 100.0;
            }},
        {"--fault a@1,b", [](const HostSettings &s) { return s.fault == "a@1,b"; }},
        {"--mode NFM --deemphasis 750", [](const auto &s) { return s.deemphasisUs == 750.0; }},
        {"--mode WFM --tune-b 7.11M", [](const HostSettings &s) { return !s.tuneBHz; }},
        {"--vac-out v", [](const HostSettings &s) { return s.vac.rateHz == 48000; }},
        {"--vac-out v --vac-rate 44.1k", [](const auto &s) { return s.vac.rateHz == 44100; }},
        {"--record wave",
            [](const HostSettings &s) {
                return s.recording.format == vm::file::IQFile::StandartWave;
            }},
        {"--agc slow --agc fast", [](const auto &s) { return s.given["agc"] == "fast"; }},
        {"",
            [](const HostSettings &s) {
                return !s.given.contains("agc") && s.valueOf("agc") == "med";
            }},
        {"--equalizer 0,-2,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,-40",
            [](const HostSettings &s) {
                const auto gains = s.given["equalizer"].toList();
                return gains.size() == 18 && gains[1] == -2 && gains[17] == -40;
            }},
    };
    for (const auto &c : cases)
        EXPECT_TRUE(c.isThere(settingsOf(c.options))) << c.options;
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
        {"--d2xx d.so", 7.1e6, 7.1e6},
        {"--tune 14.01M", 14.01e6, 14.01e6},
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
        {"--windowed", "windowed"},
        {"extra", "extra"},
        {"--rate", "rate"},
        {"--rate 44100", "48k, 96k, 192k, 384k, 768k, 1.536M, 1.92M, 2.56M, 3.072M"},
        {"--mode FM", "AM, SAM, DSB, LSB, USB, CW, NFM, DIGL, DIGU, WFM, DRM"},
        {"--center 801M", "--center: 801M is outside 0 to 800M"},
        {"--center 7M --tune 7.2M", "--tune"},
        {"--tune-b 7.2M", "--tune-b"},
        {"--notch 7.2M", "--notch"},
        {"--filter 1:2:3", "LOW:HIGH"},
        {"--filter 2700:300", "does not rise"},
        {"--notch 7.11M:19", "20 to 20k"},
        {"--notch 7.1M --notch 7.1M --notch 7.1M --notch 7.1M --notch 7.1M --notch 7.1M --notch "
         "7.1M --notch 7.1M --notch 7.1M",
            "8 filters"},
        {"--scene-rate 192k", "--scene-rate needs --scene"},
        {"--agc off --agc-hang 10", "--agc off"},
        {"--equalizer 1,2,3", "3 gains"},
        {"--ctcss 100.2", "100.0"},
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
        {"--ctcss 100 --mode NFM", nullptr},
        {"--fft-size 512 --out a", "--fft-size does nothing without --panorama or --waterfall"},
        {"--fft-size 512 --waterfall w", nullptr},
        {"--invert", "--invert does nothing without --out or --vac-out or --line-out"},
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
             "Gain control: off, long, slow, med, fast or user. Default med. Not in NFM, WFM.",
             "Default: the built-in band.", "Only in NFM.", "3.072M", "DIGU 70:3000",
             "Exit status: 0"})
        EXPECT_TRUE(help.contains(text)) << text;
}
} // namespace
