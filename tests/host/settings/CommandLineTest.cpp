// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/CommandLine.h"

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
    for (const char *both : {"AM", "SAM", "DSB", "CW", "NFM", "WFM", "DRM"}) {
        const auto s = settingsOf(QString("--headless --mode ") + both);
        EXPECT_EQ(s.filterLowHz, -s.filterHighHz) << both;
    }
}

TEST(CommandLineTest, EveryToolArrives)
{
    const auto t = settingsOf(
        "--headless --agc fast --agc-gain -20 --agc-attack 1.5 --agc-decay 90 --agc-hang 80 --nb1 "
        "--nb1-threshold 4.5 --nb2 --nb2-threshold 3 --nr --nr-taps 50 --nr-delay 40 --nr-rate "
        "1e-4 --nr-leak 2e-4 --anf --anf-taps 61 --anf-delay 65 --anf-rate 0.001 --anf-leak 3e-5 "
        "--apf --dse --binaural --equalizer 1,-2,3,0,0,0,0,0,0,0,0,0,0,0,0,0,0,-40 --squelch -95 "
        "--ctcss 100 --tune-b 7.11M --volume -3 --volume-b -6 --balance -4 --cw-tone 650 --mono")
                       .tools;
    EXPECT_EQ(t.agcMode, DspCore::AgcMode::Fast);
    EXPECT_EQ(t.agcGainDb, -20);
    EXPECT_EQ(t.agcAttackMs, 1.5);
    EXPECT_EQ(t.agcDecayMs, 90.0);
    EXPECT_EQ(t.agcHangMs, 80.0);
    EXPECT_TRUE(t.nb1 && t.nb2 && t.apf && t.dse && t.binaural && t.mono);
    EXPECT_EQ(t.nb1Threshold, 4.5);
    EXPECT_EQ(t.nb2Threshold, 3.0);
    EXPECT_TRUE(t.nr.on && t.anf.on);
    EXPECT_EQ(t.nr.taps, 50);
    EXPECT_EQ(t.nr.delay, 40);
    EXPECT_EQ(t.nr.rate, 1e-4);
    EXPECT_EQ(t.nr.leak, 2e-4);
    EXPECT_EQ(t.anf.taps, 61);
    EXPECT_EQ(t.anf.delay, 65);
    EXPECT_EQ(t.anf.rate, 0.001);
    EXPECT_EQ(t.anf.leak, 3e-5);
    ASSERT_EQ(t.equalizerDb.size(), 18);
    EXPECT_EQ(t.equalizerDb[1], -2);
    EXPECT_EQ(t.equalizerDb[17], -40);
    EXPECT_EQ(t.squelchDbm, -95);
    EXPECT_EQ(t.ctcssIndex, 12);
    EXPECT_EQ(t.tuneBHz, 7.11e6);
    EXPECT_EQ(t.volumeDb, -3);
    EXPECT_EQ(t.volumeBDb, -6);
    EXPECT_EQ(t.balanceDb, -4);
    EXPECT_EQ(t.cwToneHz, 650);
}

TEST(CommandLineTest, EveryOutputArrives)
{
    const auto s = settingsOf(
        "--headless --plugin p.so --d2xx d.so --settings s.ini --preamp -9.5 --auto-preamp "
        "--notch 7.11M:250 --notch 7.12M --fft-size 8192 --averaging 7 --averaging-type exp "
        "--fft-interval 25 --hide-slopes --waterfall-filter --panorama p.png --waterfall w.png "
        "--audio-spectrum s.png --record wave --record-path iq --vac-out v.wav --vac-rate 44.1k "
        "--line-out l.wav");
    EXPECT_EQ(s.pluginFile, "p.so");
    EXPECT_EQ(s.d2xxFile, "d.so");
    EXPECT_EQ(s.settingsFile, "s.ini");
    EXPECT_EQ(s.preampDb, -9.5);
    EXPECT_TRUE(s.autoPreamp);
    ASSERT_EQ(s.notches.size(), 2);
    EXPECT_EQ(s.notches[0].frequencyHz, 7.11e6);
    EXPECT_EQ(s.notches[0].widthHz, 250.0);
    EXPECT_EQ(s.notches[1].widthHz, 100.0);
    EXPECT_EQ(s.spectrum.fftSize, 8192);
    EXPECT_EQ(s.spectrum.averaging, 7);
    EXPECT_EQ(s.spectrum.averagingType, 2);
    EXPECT_EQ(s.spectrum.intervalMs, 25);
    EXPECT_TRUE(s.spectrum.hideSlopes && s.spectrum.waterfallFilter);
    EXPECT_EQ(s.spectrum.panoramaFile, "p.png");
    EXPECT_EQ(s.spectrum.waterfallFile, "w.png");
    EXPECT_EQ(s.spectrum.audioSpectrumFile, "s.png");
    EXPECT_EQ(s.recording.format, vm::file::IQFile::StandartWave);
    EXPECT_EQ(s.recording.folder, "iq");
    EXPECT_EQ(s.vac.file, "v.wav");
    EXPECT_EQ(s.vac.rateHz, 44100);
    EXPECT_EQ(s.lineOut.file, "l.wav");
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
        {"--headless --mode FM", "AM, SAM, DSB, LSB, USB, CW, NFM, DIGL, DIGU, WFM, DRM"},
        {"--headless --mode AM --filter -18001:4000", "-18000:18000"},
        {"--headless --mode CW --filter 0:10001", "limits of CW"},
        {"--headless --mode WFM --filter -156001:0", "-156000:156000"},
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
        {"--headless --agc quick", "off, long, slow, med, fast, user"},
        {"--headless --agc-gain 121", "-20 to 120"},
        {"--headless --agc-gain 10.5", "whole number"},
        {"--headless --agc-attack 2.6", "--agc-attack"},
        {"--headless --agc-decay 9", "--agc-decay"},
        {"--headless --agc-hang 5001", "--agc-hang"},
        {"--headless --agc off --agc-hang 10", "--agc off"},
        {"--headless --nb1-threshold 3", "needs --nb1"},
        {"--headless --nb1 --nb2-threshold 3", "needs --nb2"},
        {"--headless --nb1 --nb1-threshold 20.5", "--nb1-threshold"},
        {"--headless --nr --anf-taps 60", "needs --anf"},
        {"--headless --nr --nr-taps 0", "--nr-taps"},
        {"--headless --nr --nr-delay 258", "1 to 257"},
        {"--headless --anf --anf-rate 1.5", "--anf-rate"},
        {"--headless --anf --anf-leak much", "much"},
        {"--headless --equalizer 1,2,3", "3 gains"},
        {"--headless --equalizer 0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1.5", "'1.5'"},
        {"--headless --equalizer 0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,41", "'41'"},
        {"--headless --squelch -161", "--squelch"},
        {"--headless --squelch loud", "loud"},
        {"--headless --ctcss 100.2", "100.0"},
        {"--headless --ctcss 254.3", "254.1"},
        {"--headless --tune-b 7.2M", "--tune-b"},
        {"--headless --volume 1", "-60 to 0"},
        {"--headless --volume -3.5", "whole number"},
        {"--headless --volume-b -6", "needs --tune-b"},
        {"--headless --tune-b 7.11M --volume-b -61", "--volume-b"},
        {"--headless --balance 3", "needs --tune-b"},
        {"--headless --tune-b 7.11M --balance 61", "--balance"},
        {"--headless --cw-tone 299", "300 to 1k"},
        {"--headless --plugin=", "--plugin"},
        {"--headless --preamp loud", "loud"},
        {"--headless --auto-preamp --free-run", "--free-run"},
        {"--headless --notch 7.11M:x", "7.11M:x"},
        {"--headless --notch 7.2M", "--notch"},
        {"--headless --notch 7.11M:19", "20 to 20k"},
        {"--headless --notch 7.1M --notch 7.1M --notch 7.1M --notch 7.1M --notch 7.1M --notch "
         "7.1M --notch 7.1M --notch 7.1M --notch 7.1M",
            "8 filters"},
        {"--headless --record mp3", "vsdr, wave, hdsdr"},
        {"--headless --record-path /tmp", "needs --record"},
        {"--headless --vac-rate 48k", "needs --vac-out"},
        {"--headless --vac-out v.wav --vac-rate 7999", "8k to 192k"},
        {"--headless --averaging-type peak", "linear, rms, exp"},
        {"--headless --averaging 31", "1 to 30"},
        {"--headless --fft-size 255", "256"},
        {"--headless --fft-interval 41", "10 to 40"},
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
        {"--scene-frequency", "--free-run", "--eeprom", "--fault", "--agc-hang", "WFM", "3.072M"})
        EXPECT_TRUE(help->text.contains(text)) << text;
}
} // namespace
