// SPDX-License-Identifier: GPL-3.0-or-later
// The page's controls and the engine, joined as the plugin joins them. What the engine
// holds is heard: two engines agree if they make the same of the same stream, sample for sample.
#include "Options/OptionsTest.h"
#include "Options/ZephrinMOptions.h"
#include "ZephrinMInterface.h"
#include "ZephrinNano/Dsp/EngineTest.h"

#include <QSettings>
#include <QTemporaryDir>

#include <functional>

namespace
{
using DspCore::AgcMode;
using DspCore::Modulation;
using Setter = std::function<void(ZephrinMDSP &, double)>;

/// A setting that both keep, and what makes it heard.
struct Kept
{
    QByteArray key;
    QByteArray control;
    Modulation mode;
    Setter use; // whatever the value
    Setter set;
    double other; // than the form starts with, and sounding otherwise
};

void PrintTo(const Kept &kept, std::ostream *out)
{
    *out << kept.key.constData();
}

template <typename Argument>
Setter by(void (ZephrinMDSP::*setter)(Argument))
{
    return [=](ZephrinMDSP &engine, double value) { (engine.*setter)(Argument(value)); };
}

/// A tool's switch of receiver 0.
Setter on(void (ZephrinMDSP::*setter)(unsigned, bool))
{
    return [=](ZephrinMDSP &engine, double) { (engine.*setter)(0, true); };
}

/// One time of a mode of the gain control.
Setter by(void (ZephrinMDSP::*setter)(AgcMode, REAL))
{
    return [=](ZephrinMDSP &engine, double value) { (engine.*setter)(AgcMode::User, value); };
}

const auto kPlain = [](ZephrinMDSP &, double) {};
const auto kAgc = [](ZephrinMDSP &engine, double) {
    engine.setAgcMode(AgcMode::User);
    engine.setAgcGain(0, 60);
};

std::vector<Kept> all()
{
    using Engine = ZephrinMDSP;
    constexpr auto USB = Modulation::USB, CW = Modulation::CW;
    constexpr auto DIGL = Modulation::DIGL, DIGU = Modulation::DIGU;
    const Setter nr = on(&Engine::setNr), anf = on(&Engine::setAnf);
    const Setter apf = on(&Engine::setApf), dse = on(&Engine::setDse);
    const Setter nb1 = on(&Engine::setNb1), nb2 = on(&Engine::setNb2);
    return {
        {"agc_user_Attack", "dsbAgcUserAttack", USB, kAgc, by(&Engine::setAgcAttack), 0.3},
        {"agc_user_Decay", "dsbAgcUserDecay", USB, kAgc, by(&Engine::setAgcDecay), 33.0},
        {"agc_user_hangTime", "sbAgcUserHangTime", USB, kAgc, by(&Engine::setAgcHangTime), 22},
        {"dsp_nr_taps", "sbNrTaps", USB, nr, by(&Engine::setNrTaps), 120},
        {"dsp_nr_delay", "sbNrDelay", USB, nr, by(&Engine::setNrDelay), 9},
        {"dsp_nr_rate", "dsbNrRate", USB, nr, by(&Engine::setNrRate), 0.01},
        {"dsp_nr_leak", "dsbNrLeak", USB, nr, by(&Engine::setNrLeak), 0.01},
        {"dsp_anf_taps", "sbAnfTaps", USB, anf, by(&Engine::setAnfTaps), 120},
        {"dsp_anf_delay", "sbAnfDelay", USB, anf, by(&Engine::setAnfDelay), 9},
        {"dsp_anf_rate", "dsbAnfRate", USB, anf, by(&Engine::setAnfRate), 0.01},
        {"dsp_anf_leak", "dsbAnfLeak", USB, anf, by(&Engine::setAnfLeak), 0.01},
        {"dsp_nb1_thr", "dsbNb1Threshold", USB, nb1, by(&Engine::setNb1Threshold), 1.2},
        {"dsp_nb2_thr", "dsbNb2Threshold", USB, nb2, by(&Engine::setNb2Threshold), 1.2},
        {"dsp_apf_gain", "sbApfCwGain", CW, apf, by(&Engine::setCwApfGain), 12},
        {"dsp_apf_quolity", "sbApfCwQuality", CW, apf, by(&Engine::setCwApfQuality), 11},
        {"dsp_apf_ssb_gain", "sbApfSsbGain", USB, apf, by(&Engine::setSsbApfGain), 12},
        {"dsp_apf_ssb_quolity", "dsbApfSsbQuality", USB, apf, by(&Engine::setSsbApfQuality), 4},
        {"dsp_apf_ssb_freq", "sbApfSsbFreq", USB, apf, by(&Engine::setSsbApfFreq), 900},
        {"dsp_dse_taps", "sbDseTaps", CW, dse, by(&Engine::setDseQuality), 150},
        {"dsp_dse_swap", "chbDseSwap", CW, dse, by(&Engine::setDseSwap), 1},
        {"dsp_digl_offset", "sbDiglOffset", DIGL, kPlain, by(&Engine::setDiglOffset), 900},
        {"dsp_digu_offset", "sbDiguOffset", DIGU, kPlain, by(&Engine::setDiguOffset), 900},
        {"cw_pitch", "sbCwPitch", CW, kPlain, by(&Engine::setCwTone), 500},
        {"fir_taps_ssb", "sbFilterTapsSsb", USB, kPlain, by(&Engine::setSsbFilterTaps), 801},
        {"fir_taps_am", "sbFilterTapsAm", Modulation::AM, kPlain, by(&Engine::setAmFilterTaps),
            801},
        {"fir_taps_dig", "sbFilterTapsDig", DIGU, kPlain, by(&Engine::setDigFilterTaps), 801},
        {"fir_taps_cw", "sbFilterTapsCw", CW, kPlain, by(&Engine::setCwFilterTaps), 801},
    };
}

/// One engine and what it makes of a stream of tones, noise and impulses at changing levels.
class Listening : public EngineTest
{
public:
    explicit Listening(Modulation mode)
    {
        engine.setModulation(0, mode);
        engine.setBandFilterIf(0, mode == Modulation::DIGL ? -3000.0 : -900.0, 3000.0);
        recordAudio();
        start(); // a start drops what a gain control has not yet taken
    }

    std::vector<COMPLEX> heard(int blocks)
    {
        constexpr std::size_t kLoud = 12000; // samples; then the gain is free to rise
        auto stream = test::noise(blocks * kBlock, /*seed*/ 3);
        const auto a = test::tone(blocks * kBlock, 600.0 / 48000.0, 0.02);
        const auto b = test::tone(blocks * kBlock, 1900.0 / 48000.0, 0.02);
        for (std::size_t i = 0; i < stream.size(); ++i) {
            const double level = i < kLoud ? 1.0 : 0.05;
            const double impulse = i < kLoud && i % 997 == 0 ? 0.5 : 0.0;
            stream[i] = {level * (a[i].re + b[i].re + 1e-3 * stream[i].re) + impulse,
                level * (a[i].im + b[i].im + 1e-3 * stream[i].im)};
        }
        play(stream);
        engine.close();
        EXPECT_FALSE(soundCard.empty());
        return soundCard;
    }

    void TestBody() override { }
    using EngineTest::engine;
};

class PageAndEngineTest : public testing::TestWithParam<Kept>
{
protected:
    static void SetUpTestSuite()
    {
        qRegisterMetaType<AgcMode>("AgcMode");
        qRegisterMetaType<double>("REAL");
    }

    static std::vector<COMPLEX> heard(const std::function<void(ZephrinMDSP &)> &setUp)
    {
        Listening listening(GetParam().mode);
        GetParam().use(listening.engine, 0.0);
        setUp(listening.engine);
        // A gain control is heard after its hang time only, a second at the longest.
        return listening.heard(GetParam().key.startsWith("agc") ? 200 : 60);
    }

    static bool isFilterLength() { return GetParam().key.startsWith("fir"); }

    /// Joins a page to the engine and lets it read a file of what it shows.
    static void read(ZephrinMDSP &engine)
    {
        ZephrinMOptions page;
        ZephrinMInterface::joinEngine(page, engine);
        QObject::connect(&page, &ZephrinMOptions::cwPitchChanged, &engine, &ZephrinMDSP::setCwTone);
        const QTemporaryDir folder;
        QSettings settings(folder.filePath("page.ini"), QSettings::IniFormat);
        page.writeSettings(&settings);
        page.readSettings(&settings);
        if (isFilterLength()) // which a file does not set
            page.onUpdate();
    }
};

TEST_P(PageAndEngineTest, AgreeAtTheStartAndAfterReadingWhatTheFormShows)
{
    const Kept &kept = GetParam();
    const double form = test::shown(ZephrinMOptions(), kept.control);
    const auto told = heard([&](ZephrinMDSP &engine) { kept.set(engine, form); });
    const auto read = heard([&](ZephrinMDSP &engine) {
        kept.set(engine, kept.other); // whatever it was
        PageAndEngineTest::read(engine);
    });
    EXPECT_TRUE(told == read);
    EXPECT_FALSE(told == heard([&](auto &engine) { kept.set(engine, kept.other); }));
    // The blankers start with a power whose root the form rounds, the filters with a length of
    // their own.
    if (!kept.key.startsWith("dsp_nb") && !isFilterLength()) {
        EXPECT_TRUE(told == heard([](ZephrinMDSP &) {}));
    }
}

INSTANTIATE_TEST_SUITE_P(Keys, PageAndEngineTest, testing::ValuesIn(all()),
    [](const auto &info) { return std::string(info.param.key); });

TEST(PageAndAgcTableTest, EachModeStartsWithTheTimesThatTheFormShows)
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
