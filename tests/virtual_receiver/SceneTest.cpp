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

TEST(FileSceneTest, HeadersOfOtherProgramsAndCutFilesAreUnderstood)
{
    const TemporaryFolder folder;
    const std::string samples = encode("s24", kValues);
    const std::string auxi = chunk(
        "auxi", std::string(32, '\1') + bytes(std::uint32_t(kCentreHz)) + std::string(128, '\0'));
    const std::string vsdr = vsdrChunk(kCentreHz, 48000);
    struct Row
    {
        const char *what;
        std::string content;
        double frequencyHz;
        std::string notice = {}; // part of it
    };
    const std::string fmt = fmtChunk(1, 24);
    const std::string never = "never written";
    const Row rows[] = {
        {"frequency in auxi", riff(fmt + auxi + chunk("data", samples)), kCentreHz},
        {"data without a size", riff(fmt + vsdr + "data" + samples), kCentreHz},
        {"size never written", riff(fmt + "data" + bytes(0) + samples), 0.0},
        {"size beyond the end", riff(fmt + "data" + bytes(5000000) + samples + "x"), 0.0,
            "shorter"},
        {"size of an earlier recording", riff(fmt + "data" + bytes(6) + samples), 0.0, "longer"},
        {"broken off, plain", std::string(44, '\0') + samples, 0.0, never},
        {"broken off, with auxi", std::string(216, '\0') + samples, 0.0, never},
        {"chunks of others, one of odd length",
            riff(fmt + chunk("note", "abc") + chunk("data", samples.substr(0, 6))
                + chunk("kiwi", "0123456789") + chunk("data", samples.substr(6))),
            0.0},
    };
    for (const Row &row : rows) {
        Rig rig;
        const auto path = folder.write("r.wav", row.content);
        const double rateHz = row.notice == never ? 48000.0 : 0.0; // nobody else knows it
        ASSERT_EQ(vr_scene_file(path.c_str(), "wav", rateHz, 0), 0) << row.what << vr_last_error();
        EXPECT_NE(std::string(vr_scene_notice()).find(row.notice), std::string::npos) << row.what;
        EXPECT_EQ(row.notice.empty(), *vr_scene_notice() == 0) << row.what;
        EXPECT_EQ(vr_scene_frequency(), row.frequencyHz) << row.what;
        if (row.notice.empty()) { // its header is overruled, which is told
            ASSERT_EQ(vr_scene_file(path.c_str(), "wav", 96000.0, 0), 0);
            EXPECT_NE(std::string(vr_scene_notice()).find("96000"), std::string::npos) << row.what;
            ASSERT_EQ(vr_scene_file(path.c_str(), "wav", 0, 0), 0);
        }
        expectValues(rig, kCode, row.what);
    }
}

TEST(FileSceneTest, ABadFileIsNamedWithWhatIsWrong)
{
    const TemporaryFolder folder;
    const std::string data = chunk("data", encode("s16", kValues));
    struct Row
    {
        std::string name;
        std::string content;
        const char *reason;
    };
    const Row rows[] = {
        {"text.wav", "no recording", "not a WAV file"},
        {"mono.wav", riff(fmtChunk(1, 16, 1) + data), "1 channels"},
        {"empty.wav", riff(fmtChunk(1, 16)), "no samples"},
        {"brokenoff.wav", std::string(300, '\0'), "never written"},
        {"raw.s16", encode("s16", kValues), "sample rate"},
        {"raw.xyz", "0123", "unknown recording format \"xyz\""},
        {"fast.wav", riff(fmtChunk(1, 16, 2, 4294967295) + data), "rate of 4294967295 Hz"},
        {"endless.wav", riff(fmtChunk(1, 16) + vsdrChunk(kCentreHz, INFINITY) + data), "of inf"},
        {"nowhere.wav", riff(fmtChunk(1, 16) + vsdrChunk(NAN, 48000) + data), "frequency of nan"},
    };
    for (const Row &row : rows) {
        const auto path = folder.write(row.name, row.content);
        EXPECT_EQ(vr_scene_file(path.c_str(), nullptr, 0, 0), -1) << row.name;
        const std::string error = vr_last_error();
        EXPECT_EQ(error.find(path), 0u) << error;
        EXPECT_NE(error.find(row.reason), std::string::npos) << error;
    }
    EXPECT_EQ(vr_scene_file(folder.file("missing.wav").c_str(), nullptr, 0, 0), -1);
    // Who knows better may say so.
    EXPECT_EQ(vr_scene_file(folder.file("endless.wav").c_str(), nullptr, 48000, 0), 0);
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
        {"station offset=4k level=-10 mode=am depth=0.5 tone=400", 3600, -10 + sideBand},
        // J1(2.5) and J2(2.5), the Bessel functions of deviation / tone.
        {"station offset=5k level=-10 mode=nfm deviation=2500 tone=1000", 6000, -16.073},
        {"station offset=5k level=-10 mode=nfm deviation=2500 tone=1000", 7000, -17.013},
    };
    for (const unsigned code : {0u, 7u}) {
        const double rate = test::kRatesHz[code];
        for (const Row &row : rows) {
            const auto length = std::size_t(rate * 0.1);
            const auto settled = std::size_t(rate * 0.05);
            const auto received = play(folder, band + row.station, code, length, settled);
            EXPECT_NEAR(levelAt(received, row.hertz, rate), row.levelDb, kLevel)
                << row.station << " at " << rate;
            EXPECT_TRUE(row.absentHz == 0.0
                || levelAt(received, row.absentHz, rate) < row.levelDb + kSuppression)
                << row.station << " at " << rate;
        }
    }
}

TEST(BandSceneTest, TheNoiseFloorIsAPowerInOneHertz)
{
    constexpr double kStatistics = 0.1; // dB: 96000 independent samples scatter by 0.014 dB
    constexpr double kShape = 0.1;
    const TemporaryFolder folder;
    for (const unsigned code : {0u, 4u}) {
        const auto received = play(folder, "band centre=7.1M noise=-90", code, 96000);
        const double expected = -90.0 + 10 * std::log10(test::kRatesHz[code]);
        EXPECT_NEAR(test::decibels(test::rms(received)), expected, kStatistics);
        double fourth = 0.0;
        const double sigma = test::rms(received) / std::sqrt(2.0);
        for (const COMPLEX &sample : received)
            fourth += std::pow(sample.re / sigma, 4) / double(received.size());
        EXPECT_NEAR(fourth, 3.0, kShape); // of a Gaussian
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

TEST(BandSceneTest, SpeechHasItsRmsWhileSpeaking)
{
    // Half a second of tone, then of silence: the RMS counts where something is heard.
    constexpr double kEdges = 0.3; // dB
    const TemporaryFolder folder;
    std::vector<double> audio(48000);
    for (std::size_t i = 0; i < 24000; ++i)
        audio[i] = 0.3 * std::sin(2 * M_PI * 0.025 * double(i));
    folder.write("voice.wav", riff(fmtChunk(3, 64, 1) + chunk("data", encode("f64", audio))));
    auto received = play(folder,
        "band centre=7.1M\nstation offset=0 level=-20 mode=usb audio=voice.wav pause=0", 0, 48000,
        0);
    const std::vector<COMPLEX> speaking(received.begin() + 4000, received.begin() + 20000);
    const std::vector<COMPLEX> silent(received.begin() + 28000, received.begin() + 44000);
    EXPECT_NEAR(test::decibels(test::rms(speaking)), -20.0, kEdges);
    EXPECT_LT(test::decibels(test::rms(silent)), -100.0);
}

TEST(BandSceneTest, TheBuiltInBandHasItsStationsAndRepeatsExactly)
{
    const auto stream = [](double tunedHz) {
        Rig rig;
        rig.tune(tunedHz);
        rig.stream(2);
        return rig.samples(192000);
    };
    const auto first = stream(kCentreHz);
    EXPECT_EQ(test::maxError(first, stream(kCentreHz)), 0.0);
    constexpr double kRate = 192000.0;
    constexpr double kSpeech = 0.2; // dB, what a second of the other stations leaves in a bin
    EXPECT_NEAR(levelAt(first, 12000, kRate), -30.0, kSpeech); // AM carrier
    EXPECT_NEAR(levelAt(first, -9000, kRate), -50.0, kSpeech); // carrier
    // One second: voices speak and the call has begun, whatever they say.
    EXPECT_GT(levelAt(first, -15000, kRate), -50.0);
    const auto moved = stream(kCentreHz + 60000);
    EXPECT_NEAR(levelAt(moved, -48000, kRate), -30.0, kSpeech);
}

TEST(BandSceneTest, ABandOfSomeSecondsEnds)
{
    const TemporaryFolder folder;
    Rig rig;
    const auto path = folder.write(
        "short.band", "band centre=7.1M seconds=0.1\nstation offset=0 level=-6 mode=carrier\n");
    ASSERT_EQ(vr_scene_band(path.c_str()), 0) << vr_last_error();
    EXPECT_EQ(vr_scene_seconds(), 0.1);
    rig.tune(kCentreHz);
    rig.stream(0);
    const auto received = rig.samples(4900);
    EXPECT_GT(test::magnitude(received[4799]), 0.5); // -6 dBFS
    EXPECT_EQ(test::magnitude(received[4800]), 0.0);
    EXPECT_EQ(rig.status().scene_ended, 1);
}

TEST(BandSceneTest, AWrongLineIsNamedWithWhatIsWrong)
{
    struct Row
    {
        std::string text;
        int line;
        const char *reason;
    };
    const std::string band = "band centre=7.1M\n";
    const Row rows[] = {
        {"", 0, "no band line"},
        {"band centre=7.1M\n\n# a comment\nstatoin level=3", 4, "unknown line \"statoin\""},
        {"band centre=7.1Q", 1, "\"centre\" is not a number: \"7.1Q\""},
        {"band centre=1M centre=2M", 1, "given twice"},
        {"station offset=1 level=0 mode=carrier", 1, "must come before"},
        {band + "station offset=0 level=-300 mode=usb", 2, "-200 to 20"},
        {band + "station offset=0 level=0 mode=fm", 2, "(usb, lsb, am, nfm, cw, carrier)"},
        {band + "station offset=0 level=0 mode=usb tone=1000 speech=1", 2, "one of audio=FILE"},
        {band + "station offset=0 level=0 mode=cw text=\"CQ", 2, "closing quote"},
        {band + "station offset=0 level=0 mode=usb audio=fast.wav", 2, "rate of 100000001 Hz"},
        {band + "station offset=0 level=0 mode=carrier depth=1", 2, "no \"depth\""},
    };
    const TemporaryFolder folder;
    const std::string voice = chunk("data", encode("s16", kValues));
    folder.write("fast.wav", riff(fmtChunk(1, 16, 1, 100000001) + voice));
    for (const Row &row : rows) {
        const auto path = folder.write("wrong.band", row.text);
        EXPECT_EQ(vr_scene_band(path.c_str()), -1) << row.text;
        const std::string error = vr_last_error();
        EXPECT_EQ(error.find(path + ":" + std::to_string(row.line) + ": "), 0u) << error;
        EXPECT_NE(error.find(row.reason), std::string::npos) << error;
        EXPECT_EQ(error.find('\n'), std::string::npos) << error;
    }
    EXPECT_EQ(vr_scene_band(folder.file("missing.band").c_str()), -1);
}
} // namespace
