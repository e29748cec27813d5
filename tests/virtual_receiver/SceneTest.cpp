// SPDX-License-Identifier: GPL-3.0-or-later
#include "Rig.h"
#include "support/Signals.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

namespace
{
using test::Rig;
using test::TemporaryFolder;

constexpr double kCentreHz = 7.1e6;

template <typename Number>
std::string bytes(Number value, std::size_t size = sizeof(Number))
{
    return std::string(reinterpret_cast<const char *>(&value), size);
}

/// I, Q pairs in a raw or WAV encoding; values are exact in all of them.
std::string encode(const std::string &format, const std::vector<double> &values)
{
    std::string out;
    for (const double x : values)
        out += format == "u8" ? bytes(std::uint8_t(std::lround(x * 127.5 + 127.5)))
            : format == "s16" ? bytes(std::int16_t(std::lround(x * 32768)))
            : format == "s24" ? bytes(std::int32_t(std::lround(x * 8388607)), 3)
            : format == "s32" ? bytes(std::int32_t(std::llround(x * 2147483648.0)))
            : format == "f32" ? bytes(float(x))
                              : bytes(x);
    return out;
}

std::string chunk(const std::string &name, const std::string &body)
{
    return name + bytes(std::uint32_t(body.size())) + body + std::string(body.size() % 2, '\0');
}

std::string fmtChunk(int format, int bits, int channels = 2, std::uint32_t rate = 48000)
{
    return chunk("fmt ",
        bytes(std::uint16_t(format)) + bytes(std::uint16_t(channels)) + bytes(rate)
            + bytes(std::uint32_t(rate * channels * bits / 8))
            + bytes(std::uint16_t(channels * bits / 8)) + bytes(std::uint16_t(bits)));
}

std::string vsdrChunk(double frequencyHz, double rateHz)
{
    const std::string stamps(32, '\1');
    return chunk(
        "vsdr", bytes(1) + stamps + bytes(0) + bytes(frequencyHz) + bytes(rateHz) + bytes(0.0));
}

std::string riff(const std::string &chunks)
{
    return "RIFF" + bytes(std::uint32_t(chunks.size() + 4)) + "WAVE" + chunks;
}

constexpr double kCode = 1.0 / 8388607; // 24 bits
constexpr double kHalfByte = 1.0 / 255; // half a step of 8 bits
const std::vector<double> kValues = {0.5, -0.25, 0.125, 0.75, -0.5, -0.875};

void expectValues(Rig &rig, double tolerance, const std::string &what)
{
    rig.tune(kCentreHz);
    rig.stream(0);
    const auto received = rig.samples(84);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(received[i].re, kValues[2 * i], tolerance) << what;
        EXPECT_NEAR(received[i].im, kValues[2 * i + 1], tolerance) << what;
    }
    EXPECT_EQ(received[3].re, 0.0) << what;
    EXPECT_EQ(rig.status().scene_ended, 1) << what;
    rig.stop();
}

TEST(FileSceneTest, EveryFormatIsRead)
{
    struct Row
    {
        const char *format;
        int code; // of a WAV header; 0: raw
        int bits;
    };
    const TemporaryFolder folder;
    for (const Row &row : {Row{"f64", 0, 0}, {"f32", 0, 0}, {"s16", 0, 0}, {"u8", 0, 0},
             {"s16", 1, 16}, {"s24", 1, 24}, {"s32", 1, 32}, {"f32", 3, 32}}) {
        Rig rig;
        const std::string format = row.format;
        const std::string samples = encode(format, kValues);
        const auto path = row.code
            ? folder.write("r.wav", riff(fmtChunk(row.code, row.bits) + chunk("data", samples)))
            : folder.write("r." + format, samples);
        const double rateHz = row.code ? 0 : 48000;
        ASSERT_EQ(vr_scene_file(path.c_str(), nullptr, rateHz, kCentreHz), 0) << vr_last_error();
        EXPECT_DOUBLE_EQ(vr_scene_seconds(), 3.0 / 48000);
        EXPECT_EQ(vr_scene_frequency(), kCentreHz);
        EXPECT_EQ(vr_scene_width(), 48000.0);
        expectValues(rig, format == "u8" ? kHalfByte : kCode, path);
    }
}

/// A second at 48 kHz that tells its place: sample i is i / 48000.
std::string ramp(const TemporaryFolder &folder)
{
    std::vector<double> values;
    for (int i = 0; i < 48000; ++i)
        values.insert(values.end(), {i / 48000.0, 0.0});
    // In two parts, the first of a quarter of a second.
    const std::string bytes = encode("f64", values);
    return folder.write("ramp.wav",
        riff(fmtChunk(3, 64) + chunk("data", bytes.substr(0, 12000 * 16))
            + chunk("data", bytes.substr(12000 * 16))));
}

TEST(FileSceneTest, OneCanGoToAndFroInARecording)
{
    constexpr std::size_t kRead = 84; // a frame
    const TemporaryFolder folder;
    const struct
    {
        double seconds, first, second; // values of the next frame's first sample and the one after
        bool loop;
    } rows[] = {
        {0.125, 0.125, 0.125 + 1.0 / 48000, false},
        {0.75, 0.75, 0.75 + 1.0 / 48000, false},
        {0.25 - 1.0 / 48000, 0.25 - 1.0 / 48000, 0.25, false}, // over the gap between the parts
        {-1.0, 0.0, 1.0 / 48000, false},
        {1.0 - 1.0 / 48000, 1.0 - 1.0 / 48000, 0.0, false}, // the last, then nothing
        {1.0 - 1.0 / 48000, 1.0 - 1.0 / 48000, 0.0, true},  // the last, then the first
        {7.0, 0.0, 0.0, false},
        {7.0, 0.0, 1.0 / 48000, true},
    };
    Rig rig;
    ASSERT_EQ(vr_scene_file(ramp(folder).c_str(), nullptr, 0, kCentreHz), 0) << vr_last_error();
    rig.tune(kCentreHz);
    rig.stream(0);
    rig.samples(kRead);
    EXPECT_NEAR(vr_scene_position(), kRead / 48000.0, kCode);
    for (const auto &row : rows) {
        SCOPED_TRACE(row.seconds);
        vr_scene_loop(row.loop);
        ASSERT_EQ(vr_scene_seek(row.seconds), 0) << vr_last_error();
        const auto samples = rig.samples(kRead);
        EXPECT_NEAR(samples[0].re, row.first, kCode);
        EXPECT_NEAR(samples[1].re, row.second, kCode);
        const bool ends = !row.loop && row.seconds > 0.99;
        EXPECT_EQ(rig.status().scene_ended, ends);
        const double start = std::clamp(row.seconds, 0.0, 1.0);
        const double next = ends ? 1.0 : std::fmod(start + kRead / 48000.0, 1.0);
        EXPECT_NEAR(vr_scene_position(), next, kCode);
    }

    // A loop that is asked for at the end begins at once.
    vr_scene_loop(0);
    ASSERT_EQ(vr_scene_seek(1.0), 0);
    rig.samples(kRead);
    vr_scene_loop(1);
    EXPECT_NEAR(rig.samples(kRead)[1].re, 1.0 / 48000, kCode);

    EXPECT_EQ(vr_scene_seek(std::nan("")), -1);
    vr_scene_builtin();
    EXPECT_EQ(vr_scene_seek(0.0), -1);
    EXPECT_STREQ(vr_last_error(), "the scene is no recording");
    EXPECT_EQ(vr_scene_position(), 0.0);
}

TEST(FileSceneTest, APausedSceneStandsStill)
{
    constexpr std::size_t kRead = 84;
    const TemporaryFolder folder;
    Rig rig;
    ASSERT_EQ(vr_scene_file(ramp(folder).c_str(), nullptr, 0, kCentreHz), 0) << vr_last_error();
    rig.tune(kCentreHz);
    rig.stream(0);
    rig.samples(kRead);
    vr_scene_pause(1);
    EXPECT_EQ(test::rms(rig.samples(20 * kRead)), 0.0);
    EXPECT_NEAR(vr_scene_position(), kRead / 48000.0, kCode);
    vr_scene_pause(0);
    EXPECT_NEAR(rig.samples(kRead)[0].re, kRead / 48000.0, kCode);
}

TEST(FileSceneTest, HeadersOfOtherProgramsAndCutFilesAreUnderstood)
{
    const TemporaryFolder folder;
    const std::string samples = encode("s24", kValues);
    const std::string fmt = fmtChunk(1, 24);
    const std::string auxi = chunk(
        "auxi", std::string(32, '\1') + bytes(std::uint32_t(kCentreHz)) + std::string(128, '\0'));
    struct Row
    {
        std::string content;
        double frequencyHz = 0.0;
        const char *notice = ""; // part of it
        double rateHz = 0.0;     // where nobody else knows it
    };
    const Row rows[] = {
        {riff(fmt + auxi + chunk("data", samples)), kCentreHz},
        {riff(fmt + vsdrChunk(kCentreHz, 48000) + "data" + samples), kCentreHz}, // without a size
        {riff(fmt + "data" + bytes(5000000) + samples + "x"), 0.0, "shorter"},
        {std::string(44, '\0') + samples, 0.0, "never written", 48000.0},
        {riff(fmt + chunk("note", "abc") + chunk("data", samples))}, // of odd length
    };
    for (const Row &row : rows) {
        Rig rig;
        const auto path = folder.write("r.wav", row.content);
        const auto what = "row " + std::to_string(&row - rows);
        ASSERT_EQ(vr_scene_file(path.c_str(), "wav", row.rateHz, 0), 0) << what << vr_last_error();
        EXPECT_NE(std::string(vr_scene_notice()).find(row.notice), std::string::npos) << what;
        EXPECT_EQ(*row.notice == 0, *vr_scene_notice() == 0) << what;
        EXPECT_EQ(vr_scene_frequency(), row.frequencyHz) << what;
        expectValues(rig, kCode, what);
    }
}

TEST(FileSceneTest, ABadFileIsNamedWithWhatIsWrong)
{
    const TemporaryFolder folder;
    const std::string data = chunk("data", encode("s16", kValues));
    const std::tuple<const char *, std::string, const char *> rows[] = {
        {"text.wav", "no recording", "not a WAV file"},
        {"mono.wav", riff(fmtChunk(1, 16, 1) + data), "1 channels"},
        {"raw.s16", encode("s16", kValues), "sample rate"},
        {"endless.wav", riff(fmtChunk(1, 16) + vsdrChunk(kCentreHz, INFINITY) + data), "of inf"},
    };
    for (const auto &[name, content, reason] : rows) {
        const auto path = folder.write(name, content);
        EXPECT_EQ(vr_scene_file(path.c_str(), nullptr, 0, 0), -1) << name;
        const std::string error = vr_last_error();
        EXPECT_TRUE(error.starts_with(path) && error.find(reason) != std::string::npos) << error;
    }
}

TEST(FileSceneTest, AnOddRateAtTheLimitIsPlayedInBoundedTimeAndMemory)
{
    // In no ratio of small integers to the device's rate: by the book a filter of 1024 phases of
    // 123000 taps, a gigabyte.
    constexpr double kLevel = 1e-3;
    Rig rig;
    FT_SetTimeouts(rig.handle(), 60000, 60000);
    const std::vector<COMPLEX> carrier(1000, {0.5, 0.0});
    ASSERT_EQ(vr_scene_samples(&carrier[0].re, carrier.size(), 99999989, kCentreHz, 1), 0);
    rig.tune(kCentreHz);
    rig.stream(0);
    EXPECT_NEAR(rig.samples(84).back().re, 0.5, kLevel);
}

/// Streams a band and gives samples past the filters' start, tuned to its centre.
std::vector<COMPLEX> play(const TemporaryFolder &folder, const std::string &band, unsigned rateCode,
    std::size_t count, std::size_t settled = 4000)
{
    Rig rig;
    const auto path = folder.write("test.band", band);
    EXPECT_EQ(vr_scene_band(path.c_str()), 0) << vr_last_error();
    rig.tune(vr_scene_frequency());
    rig.stream(rateCode);
    rig.samples(settled / 84 * 84);
    return rig.samples(count);
}

double levelAt(const std::vector<COMPLEX> &samples, double hertz, double rate)
{
    return test::decibels(test::magnitude(test::component(samples, hertz / rate)));
}

TEST(BandSceneTest, EachModeHasItsLevelInItsPlace)
{
    constexpr double kLevel = 0.05;        // dB
    constexpr double kSuppression = -90.0; // dB, the side lobes of the window
    const TemporaryFolder folder;
    const std::string band = "band centre=7.1M\n";
    struct Row
    {
        const char *station;
        double hertz; // from the centre
        double levelDb;
        double absentHz = 0.0; // the other side band
    };
    const double sideBand = 20 * std::log10(0.5 / 2); // of AM with depth 0.5
    const Row rows[] = {
        {"station frequency=7103000 level=-30 mode=carrier", 3000, -30},
        {"station offset=-8k level=-20 mode=usb tone=300", -7700, -20, -8300},
        {"station offset=2k level=-20 mode=lsb tone=3000", -1000, -20, 5000},
        {"station offset=4k level=-10 mode=am depth=0.5 tone=400", 4000, -10},
        {"station offset=4k level=-10 mode=am depth=0.5 tone=400", 4400, -10 + sideBand},
        // J1(2.5) and J2(2.5), the Bessel functions of deviation / tone.
        {"station offset=5k level=-10 mode=nfm deviation=2500 tone=1000", 6000, -16.073},
        {"station offset=5k level=-10 mode=nfm deviation=2500 tone=1000", 7000, -17.013},
    };
    const double rate = test::kRatesHz[0];
    for (const Row &row : rows) {
        const auto received = play(folder, band + row.station, 0, std::size_t(rate * 0.1));
        EXPECT_NEAR(levelAt(received, row.hertz, rate), row.levelDb, kLevel) << row.station;
        EXPECT_TRUE(row.absentHz == 0.0
            || levelAt(received, row.absentHz, rate) < row.levelDb + kSuppression)
            << row.station;
    }
}

TEST(BandSceneTest, TheNoiseFloorIsAPowerInOneHertz)
{
    constexpr double kStatistics = 0.1; // dB: 96000 independent samples scatter by 0.014 dB
    const TemporaryFolder folder;
    for (const unsigned code : {0u, 4u}) {
        const auto received = play(folder, "band centre=7.1M noise=-90", code, 96000);
        const double expected = -90.0 + 10 * std::log10(test::kRatesHz[code]);
        EXPECT_NEAR(test::decibels(test::rms(received)), expected, kStatistics);
    }
}

TEST(BandSceneTest, MorseIsKeyedInTime)
{
    // PARIS at 20 words a minute, looked at in the middle of each dot of 60 ms; two words.
    const std::string word = "=.===.===.=...=.===...=.===.=...=.=...=.=.=.......";
    const TemporaryFolder folder;
    const auto received = play(folder,
        "band centre=7.1M\nstation offset=0 level=-6 mode=cw wpm=20 repeat=no text=\"PARIS PARIS\"",
        0, 48000 * 6, 0);
    std::string keyed;
    for (std::size_t at = 1440; at < received.size(); at += 2880)
        keyed += test::magnitude(received[at]) > 0.25 ? '=' : '.';
    EXPECT_EQ(keyed, word + word);
}

TEST(BandSceneTest, AWrongLineIsNamedWithWhatIsWrong)
{
    const std::tuple<const char *, int, const char *> rows[] = {
        {"", 0, "no band line"},
        {"band centre=7.1M\n\n# a comment\nstatoin level=3", 4, "unknown line \"statoin\""},
        {"band centre=7.1Q", 1, "\"centre\" is not a number: \"7.1Q\""},
        {"band centre=7.1M\nstation offset=0 level=-300 mode=usb", 2, "-200 to 20"},
    };
    const TemporaryFolder folder;
    for (const auto &[text, line, reason] : rows) {
        const auto path = folder.write("wrong.band", text);
        EXPECT_EQ(vr_scene_band(path.c_str()), -1) << text;
        const std::string error = vr_last_error();
        EXPECT_TRUE(error.starts_with(path + ":" + std::to_string(line) + ": ")) << error;
        EXPECT_NE(error.find(reason), std::string::npos) << error;
    }
}
} // namespace
