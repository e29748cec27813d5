// SPDX-License-Identifier: GPL-3.0-or-later
// Every setting on its way to the tool that it is for, joined as the plugin joins them: what the
// engine then makes of a stream is what a receiver on its own makes of it.
#include "DspCore/NoDenormals.h"
#include "Options/OptionsTest.h"
#include "Options/ZephrinMOptions.h"
#include "ZephrinMInterface.h"
#include "ZephrinNano/Dsp/EngineTest.h"

#include <cmath>
#include <complex>
#include <functional>
#include <numbers>

namespace
{
using DspCore::AgcMode;
using DspCore::Modulation;
using E = ZephrinMDSP;
using R = DspCore::Receiver;

/// One setting, told to the engine and to a receiver on its own.
struct Change
{
    std::function<void(E &, double)> engine = [](E &, double) {};
    std::function<void(R &, double)> receiver = [](R &, double) {};
    double value = 0.0;
};

/// Of a setter that takes the value alone.
Change all(auto inEngine, auto inReceiver, double value)
{
    return {[=](E &e, double v) { (e.*inEngine)(v); }, [=](R &r, double v) { (r.*inReceiver)(v); },
        value};
}

/// Of receiver 0.
Change own(auto inEngine, auto inReceiver, double value = true)
{
    return {[=](E &e, double v) { (e.*inEngine)(0, v); },
        [=](R &r, double v) { (r.*inReceiver)(v); }, value};
}

/// Of both channels, one after the other.
Change each(auto inEngine, auto inReceiver, double value = true)
{
    return {[=](E &e, double v) { (e.*inEngine)(0, 0, v), (e.*inEngine)(0, 1, v); },
        [=](R &r, double v) { (r.*inReceiver)(0, v), (r.*inReceiver)(1, v); }, value};
}

struct Setter
{
    const char *name;
    Modulation mode;
    Change before; // without it the setter would not be heard
    Change change;
    const char *control = nullptr; // of the options page, which tells the engine then
};

void PrintTo(const Setter &setter, std::ostream *out)
{
    *out << setter.name;
}

const Change kNr = own(&E::setNr, &R::setNr);
const Change kAnf = own(&E::setAnf, &R::setAnf);
const Change kApf = own(&E::setApf, &R::setApf);
const Change kDse = own(&E::setDse, &R::setDse);
const Change kEqualizer = own(&E::setEqualizerEnable, &R::setEqualizerEnable);
const Change kGains{[](E &e, double gain) { e.setEqualizerGains(0, QVector<int>(18, int(gain))); },
    [](R &r, double gain) { r.setEqualizerGains(QVector<int>(18, int(gain))); }, 5};
const Change kThreshold = each(&E::setSqlValue, &R::setSqlValue, 20);
const Change kSquelch = each(&E::setSqlEnable, &R::setSqlEnable);
const Change kAgcGain{[](E &e, double gain) { e.setAgcGain(1, int(gain)); },
    [](R &r, double gain) { r.setAgcGain(1, int(gain)); }, -10};

// Of the times of the gain control one changes; the others stand here.
constexpr double kAttack = 2.5, kDecay = 33.0, kHang = 22.0; // ms
const Change kAgc{[](E &e, double) {
                      e.setAgcDecay(AgcMode::User, kDecay), e.setAgcHangTime(AgcMode::User, kHang);
                      e.setAgcMode(AgcMode::User);
                  },
    [](R &r, double) { r.setAgcParam(true, kAttack, kDecay, kHang); }};

/// Only the page tells the engine.
Change agc(auto inReceiver, double ms)
{
    return {[](E &, double) {}, inReceiver, ms};
}

// RIT is the first channel's; it moves like the second channel's tuning.
const Change kRit{[](E &e, double hz) { e.setRit(0, 0, hz), e.setDownConverter(1, hz); },
    [](R &r, double hz) { r.setRit(0, hz), r.setDownConverter(1, hz); }, 300};

const Setter kSetters[] = {
    {"Nr", Modulation::USB, {}, kNr},
    {"NrTaps", Modulation::AM, kNr, all(&E::setNrTaps, &R::setNrTaps, 90), "sbNrTaps"},
    {"NrDelay", Modulation::USB, kNr, all(&E::setNrDelay, &R::setNrDelay, 19), "sbNrDelay"},
    {"NrRate", Modulation::DSB, kNr, all(&E::setNrRate, &R::setNrRate, 0.01), "dsbNrRate"},
    {"NrLeak", Modulation::USB, kNr, all(&E::setNrLeak, &R::setNrLeak, 0.9), "dsbNrLeak"},
    {"Anf", Modulation::USB, {}, kAnf},
    {"AnfTaps", Modulation::CW, kAnf, all(&E::setAnfTaps, &R::setAnfTaps, 90), "sbAnfTaps"},
    {"AnfDelay", Modulation::LSB, kAnf, all(&E::setAnfDelay, &R::setAnfDelay, 20), "sbAnfDelay"},
    {"AnfRate", Modulation::SAM, kAnf, all(&E::setAnfRate, &R::setAnfRate, 0.01), "dsbAnfRate"},
    {"AnfLeak", Modulation::NFM, kAnf, all(&E::setAnfLeak, &R::setAnfLeak, 0.9), "dsbAnfLeak"},
    {"SsbApf", Modulation::USB, {}, kApf},
    {"SsbApfGain", Modulation::USB, kApf, all(&E::setSsbApfGain, &R::setSsbApfGain, 9),
        "sbApfSsbGain"},
    {"SsbApfQuality", Modulation::USB, kApf, all(&E::setSsbApfQuality, &R::setSsbApfQuality, 2.5),
        "dsbApfSsbQuality"},
    {"SsbApfFreq", Modulation::USB, kApf, all(&E::setSsbApfFreq, &R::setSsbApfFreq, 900),
        "sbApfSsbFreq"},
    {"CwApf", Modulation::CW, {}, kApf},
    {"CwApfGain", Modulation::CW, kApf, all(&E::setCwApfGain, &R::setCwApfGain, 9), "sbApfCwGain"},
    {"CwApfQuality", Modulation::CW, kApf, all(&E::setCwApfQuality, &R::setCwApfQuality, 2),
        "sbApfCwQuality"},
    {"CwTone", Modulation::CW, {}, all(&E::setCwTone, &R::setCwTone, 900), "sbCwPitch"},
    {"CwToneOfTheApf", Modulation::CW, kApf, all(&E::setCwTone, &R::setCwTone, 900)},
    {"Dse", Modulation::CW, {}, kDse},
    {"DseQuality", Modulation::CW, kDse, all(&E::setDseQuality, &R::setDseQuality, 140),
        "sbDseTaps"},
    {"DseSwap", Modulation::CW, kDse, all(&E::setDseSwap, &R::setDseSwap, true), "chbDseSwap"},
    {"Bin", Modulation::USB, {}, own(&E::setBin, &R::setBin)},
    {"EqualizerEnable", Modulation::DSB, kGains, kEqualizer},
    {"EqualizerGains", Modulation::NFM, kEqualizer, kGains},
    {"SqlEnable", Modulation::USB, kThreshold, kSquelch},
    {"SqlValue", Modulation::NFM, kSquelch, kThreshold},
    {"EnableCtcss", Modulation::NFM, {}, own(&E::setEnableCTCSS, &R::setEnableCTCSS)},
    {"ToneCtcss", Modulation::NFM, own(&E::setEnableCTCSS, &R::setEnableCTCSS),
        own(&E::setToneCTCSS, &R::setToneCTCSS, 20)},
    {"DiglOffset", Modulation::DIGL, {}, all(&E::setDiglOffset, &R::setDiglOffset, 900),
        "sbDiglOffset"},
    {"DiguOffset", Modulation::DIGU, {}, all(&E::setDiguOffset, &R::setDiguOffset, 700),
        "sbDiguOffset"},
    {"AgcGain", Modulation::USB, {}, kAgcGain},
    {"AgcAttack", Modulation::USB, kAgc,
        agc([](R &r, double ms) { r.setAgcParam(true, ms, kDecay, kHang); }, 0.3),
        "dsbAgcUserAttack"},
    {"AgcDecay", Modulation::USB, kAgc,
        agc([](R &r, double ms) { r.setAgcParam(true, kAttack, ms, kHang); }, 300),
        "dsbAgcUserDecay"},
    {"AgcHangTime", Modulation::USB, kAgc,
        agc([](R &r, double ms) { r.setAgcParam(true, kAttack, kDecay, ms); }, 200),
        "sbAgcUserHangTime"},
    {"Rit", Modulation::USB, {}, kRit},
    {"MainVolume", Modulation::USB, {}, all(&E::setMainVolume, &R::setMainVolume, -20.0)},
    {"Volume", Modulation::USB, {}, each(&E::setVolume, &R::setVolume, -6.0)},
    {"Balance", Modulation::USB, {}, each(&E::setBalance, &R::setBalance, 9.0)},
    {"MainMute", Modulation::USB, {}, all(&E::setMainMute, &R::setMainMute, true)},
    {"Mute", Modulation::USB, {}, each(&E::setMute, &R::setMute)},
    {"SsbFilterTaps", Modulation::USB, {}, all(&E::setSsbFilterTaps, &R::setFilterTaps, 801),
        "sbFilterTapsSsb"},
    {"AmFilterTaps", Modulation::AM, {}, all(&E::setAmFilterTaps, &R::setFilterTaps, 801),
        "sbFilterTapsAm"},
    {"DigFilterTaps", Modulation::DIGU, {}, all(&E::setDigFilterTaps, &R::setFilterTaps, 801),
        "sbFilterTapsDig"},
    {"CwFilterTaps", Modulation::CW, {}, all(&E::setCwFilterTaps, &R::setFilterTaps, 801),
        "sbFilterTapsCw"},
};

/// What the page tells the engine, once it is joined, of a control that is turned.
void tellByPage(E &engine, const char *control, double value)
{
    qRegisterMetaType<AgcMode>("AgcMode");
    qRegisterMetaType<double>("REAL");
    ZephrinMOptions page;
    ZephrinMInterface::joinEngine(page, engine);
    QObject::connect(&page, &ZephrinMOptions::cwPitchChanged, &engine, &E::setCwTone);
    test::turn(page, control, value);
    if (QByteArray(control).startsWith("sbFilterTaps"))
        page.onUpdate(); // a filter length waits for its button
}

class SettersTest : public EngineTest, public testing::WithParamInterface<Setter>
{
protected:
    static constexpr int kBlocks = 90; // long enough for the tone squelch to open by any rounding
    static constexpr double kLow = -1500.0; // Hz
    static constexpr double kHigh = 5000.0;

    /// Something for every tool: an FM station with the lowest squelch tone at +700 Hz in noise,
    /// loud and then weak. Zeros lead it in, so that the fade at the start of the stream is over
    /// before it begins.
    static std::vector<COMPLEX> station()
    {
        constexpr int kFaded = 32;
        constexpr int kLoud = 24000; // then a gain control is free to rise
        constexpr double kTwoPi = 2.0 * std::numbers::pi;
        auto stream = test::noise(kBlocks * kBlock, /*seed*/ 9);
        for (std::size_t n = 0; n < stream.size(); ++n) {
            const double t = double(n) / 48000.0;
            const auto fm = std::polar(0.02,
                kTwoPi * 700.0 * t + 3.0 * std::sin(kTwoPi * 67.0 * t)
                    + 0.3 * std::sin(kTwoPi * 900.0 * t));
            const double level = n < kFaded ? 0.0 : n < kLoud ? 1.0 : 0.1;
            stream[n] = {level * (fm.real() + 1e-3 * stream[n].re),
                level * (fm.imag() + 1e-3 * stream[n].im)};
        }
        return stream;
    }

    /// What a receiver on its own makes of the station, told the same as the engine's and reckoning
    /// like it: one channel, with the other one muted.
    static std::vector<COMPLEX> played(const std::vector<Change> &changes, unsigned channel = 0)
    {
        constexpr int kFilterTaps = 1537;
        const DspCore::NoDenormals scope;
        R receiver;
        receiver.setInputSampleRate(48000.0);
        receiver.setEnableVfob(true);
        receiver.setMute(1 - channel, true);
        receiver.setModulation(GetParam().mode);
        receiver.setFilterTaps(kFilterTaps);
        receiver.setBandFilterIf(0, kLow, kHigh);
        receiver.clear();
        for (const Change &change : changes)
            change.receiver(receiver, change.value);
        std::vector<COMPLEX> audio;
        receiver.setSoundCardCallback([&](gsl::span<COMPLEX> block) {
            for (const COMPLEX &pair : block)
                audio.push_back({float(pair.re), float(pair.im)});
        });
        auto stream = station();
        for (int block = 0; block < kBlocks; ++block)
            receiver.process(stream.data() + block * kBlock, kBlock);
        return audio;
    }
};

TEST_P(SettersTest, ReachTheirToolOnBothChannelsAlike)
{
    constexpr double kTrace = 1e-6; // of the muted channel, and of single precision
    constexpr double kHeard = 1e-4;
    const Setter &row = GetParam();
    recordAudio();
    engine.setChannelEnable(0, 1, true);
    engine.setMute(0, 1, true);
    engine.setModulation(0, row.mode);
    engine.setBandFilterIf(0, kLow, kHigh);
    start(); // which drops what a gain control has not yet taken
    row.before.engine(engine, row.before.value);
    if (row.control)
        tellByPage(engine, row.control, row.change.value);
    else
        row.change.engine(engine, row.change.value);
    play(station());
    const auto expected = played({row.before, row.change});
    const auto untold = played({row.before});
    EXPECT_LT(test::maxError(soundCard, expected), kTrace);
    EXPECT_LT(test::maxError(played({row.before, row.change}, 1), expected), kTrace);
    EXPECT_GT(test::maxError(untold, expected), kHeard);
    // It starts with what the form shows; filters have a length of their own.
    const QString control = row.control;
    if (row.control && !control.startsWith("sbFilterTaps") && !control.contains("Agc")) {
        Change form = row.change;
        form.value = test::shown(ZephrinMOptions(), row.control);
        EXPECT_EQ(played({row.before, form}), untold);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SettersTest, testing::ValuesIn(kSetters), [](const auto &row) { return row.param.name; });

/// A steady carrier, with a pulse ten times as strong in the last block.
std::vector<COMPLEX> pulse(int blocks, int at)
{
    constexpr int kBlock = EngineLimits::kBlock;
    std::vector<COMPLEX> stream(std::size_t(blocks * kBlock), COMPLEX{0.1, 0.0});
    stream[stream.size() - kBlock + std::size_t(at)].re = 1.0;
    return stream;
}
using PageAndBlankersTest = EngineTest;

TEST_F(PageAndBlankersTest, NoiseBlankersWorkAheadOfEverythingThatReadsTheStream)
{
    constexpr int kSettled = 60; // blocks until the blanker's mean power is the carrier's
    constexpr double kSettling = 1e-6;
    const auto pulseIs = [&](int blocks, double level) {
        iq.clear();
        start();
        play(pulse(blocks, 100));
        engine.close();
        EXPECT_NEAR(iq.at((blocks - 1) * kBlock + 100).re, level, kSettling);
    };
    recordIq();
    pulseIs(kSettled, 1.0);
    engine.setNb1(0, true);
    tellByPage(engine, "dsbNb1Threshold", 5.0);
    pulseIs(kSettled, 0.0);
    tellByPage(engine, "dsbNb1Threshold", 11.0);
    pulseIs(kSettled, 0.1);
    engine.setNb1(0, false);
    engine.setNb2(0, true);
    tellByPage(engine, "dsbNb2Threshold", 5.0);
    pulseIs(kSettled, 0.25 * 1.0 + 0.75 * 0.1);
}

TEST(PageAndAgcTableTest, EachModeOfTheGainControlStartsWithTheTimesThatTheFormShows)
{
    const ZephrinMOptions page;
    for (const auto mode :
        {AgcMode::Long, AgcMode::Slow, AgcMode::Med, AgcMode::Fast, AgcMode::User}) {
        const AgcTable::Param times = AgcTable().setMode(mode).times;
        EXPECT_EQ(times.attack, page.agcAttack(mode)) << int(mode);
        EXPECT_EQ(times.decay, page.agcDecay(mode)) << int(mode);
        EXPECT_EQ(times.hangTime, page.agcHangTime(mode)) << int(mode);
    }
}
} // namespace
