// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine.h"

#include <gtest/gtest.h>

namespace
{
auto read(const QString &arguments)
{
    return host::readCommandLine(("velmora-host " + arguments).split(' ', Qt::SkipEmptyParts));
}

host::HostSettings settingsOf(const QString &arguments)
{
    const auto result = read(arguments);
    if (const auto *error = std::get_if<host::UsageError>(&result))
        ADD_FAILURE() << qPrintable(arguments) << ": " << qPrintable(error->text);
    const auto *settings = std::get_if<host::HostSettings>(&result);
    return settings ? *settings : host::HostSettings{};
}

TEST(CommandLineTest, EveryOptionArrives)
{
    const auto s = settingsOf(
        "--headless --scene s.raw --scene-format s16 --scene-rate 250k --scene-frequency 14.1M "
        "--rate 1.536M --center 14.2e6 --tune 14074000 --mode lsb --filter -3k:-200 --seconds 2.5 "
        "--free-run --out a.wav --report r.json --eeprom e.bin --fault lost-byte@1000");
    EXPECT_EQ(s.sceneFile, "s.raw");
    EXPECT_EQ(s.sceneFormat, "s16");
    EXPECT_EQ(s.sceneRateHz, 250000.0);
    EXPECT_EQ(s.sceneFrequencyHz, 14.1e6);
    EXPECT_EQ(s.deviceRateHz, 1536000);
    EXPECT_EQ(s.centerHz, 14.2e6);
    EXPECT_EQ(s.tuneHz, 14074000.0);
    EXPECT_EQ(s.mode->modulation, DspCore::Modulation::LSB);
    EXPECT_EQ(s.filterLowHz, -3000.0);
    EXPECT_EQ(s.filterHighHz, -200.0);
    EXPECT_EQ(s.seconds, 2.5);
    EXPECT_TRUE(s.freeRun);
    EXPECT_EQ(s.outFile, "a.wav");
    EXPECT_EQ(s.reportFile, "r.json");
    EXPECT_EQ(s.eepromFile, "e.bin");
    EXPECT_EQ(s.fault, "lost-byte@1000");
}

TEST(CommandLineTest, TheCentreFollowsWhatIsKnown)
{
    const struct
    {
        const char *options;
        double center;
        double tune;
    } cases[] = {
        {"", 7.1e6, 7.1e6},
        {"--center 14M", 14e6, 14e6},
        {"--tune 14.01M", 14.01e6, 14.01e6},
        {"--center 14M --tune 14.01M", 14e6, 14.01e6},
        {"--scene a.wav --scene-frequency 3.6M", 3.6e6, 3.6e6},
        {"--scene a.wav --scene-frequency 3.6M --tune 3.61M", 3.6e6, 3.61e6},
        {"--tune 7.102M", 7.1e6, 7.102e6},
        {"--tune 7.2M", 7.2e6, 7.2e6},
        {"--rate 384k --tune 7.2M", 7.1e6, 7.2e6},
        {"--center 0", 0.0, 0.0},
    };
    for (const auto &c : cases) {
        const auto s = settingsOf(QString("--headless ") + c.options);
        EXPECT_EQ(s.centerHz, c.center) << c.options;
        EXPECT_EQ(s.tuneHz, c.tune) << c.options;
    }
}

TEST(CommandLineTest, SideBandsHaveTheirSigns)
{
    for (const char *lower : {"LSB", "DIGL"}) {
        const auto s = settingsOf(QString("--headless --mode ") + lower);
        EXPECT_LT(s.filterLowHz, s.filterHighHz) << lower;
        EXPECT_LE(s.filterHighHz, 0.0) << lower;
    }
    for (const char *upper : {"USB", "DIGU"}) {
        const auto s = settingsOf(QString("--headless --mode ") + upper);
        EXPECT_LT(s.filterLowHz, s.filterHighHz) << upper;
        EXPECT_GE(s.filterLowHz, 0.0) << upper;
    }
    for (const char *both : {"DSB", "DRM"}) {
        const auto s = settingsOf(QString("--headless --mode ") + both);
        EXPECT_EQ(s.filterLowHz, -s.filterHighHz) << both;
    }
}

TEST(CommandLineTest, ASlipIsNamedInOneLine)
{
    const struct
    {
        const char *options;
        const char *named; // what the message must tell
    } cases[] = {
        {"", "--headless"},
        {"--headless --windowed", "windowed"},
        {"--headless extra", "extra"},
        {"--headless --rate", "rate"},
        {"--headless --rate 44100", "48k, 96k, 192k, 384k, 768k, 1.536M, 1.92M, 2.56M, 3.072M"},
        {"--headless --rate 192000.5", "192000.5"},
        {"--headless --rate fast", "fast"},
        {"--headless --mode AM", "DSB, LSB, USB, DIGL, DIGU, DRM"},
        {"--headless --center -1", "--center"},
        {"--headless --center 801M", "800M"},
        {"--headless --center x", "'x' is not a number"},
        {"--headless --center 7M --tune 7.2M", "--tune"},
        {"--headless --filter 300", "LOW:HIGH"},
        {"--headless --filter 300:", "LOW:HIGH"},
        {"--headless --filter 1:2:3", "LOW:HIGH"},
        {"--headless --filter 2700:300", "--filter"},
        {"--headless --filter -300:2700", "--filter"}, // in USB
        {"--headless --mode LSB --filter 300:2700", "limits of LSB"},
        {"--headless --filter 300:10001", "10000"},
        {"--headless --seconds 0", "--seconds"},
        {"--headless --seconds -3", "--seconds"},
        {"--headless --seconds soon", "soon"},
        {"--headless --scene a.raw --scene-format mp3", "wav, f64, f32, s16, u8"},
        {"--headless --scene a.raw --scene-rate 0", "--scene-rate"},
        {"--headless --scene-rate 192k", "--scene"},
        {"--headless --scene=", "--scene"},
        {"--headless --out=", "--out"},
    };
    for (const auto &c : cases) {
        const auto result = read(c.options);
        const auto *error = std::get_if<host::UsageError>(&result);
        ASSERT_TRUE(error) << c.options;
        EXPECT_TRUE(error->text.contains(c.named)) << c.options << ": " << qPrintable(error->text);
        EXPECT_FALSE(error->text.contains('\n')) << c.options;
    }
}

TEST(CommandLineTest, HelpNamesEveryOptionAndMode)
{
    const auto result = read("--help");
    const auto *help = std::get_if<host::Information>(&result);
    ASSERT_TRUE(help);
    for (const char *text :
        {"--scene-frequency", "--free-run", "--eeprom", "--fault", "DIGU", "3.072M"})
        EXPECT_TRUE(help->text.contains(text)) << text;
}
} // namespace
