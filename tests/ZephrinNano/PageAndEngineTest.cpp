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
    const char *key;
    const char *control;
    Modulation mode;
    void (*use)(ZephrinMDSP &engine);
    Setter set;
    double other; // than the form starts with, and sounding otherwise
};

void PrintTo(const Kept &kept, std::ostream *out)
{
    *out << kept.key;
}

template <typename Argument>
Setter by(void (ZephrinMDSP::*setter)(Argument))
{
    return [setter](ZephrinMDSP &engine, double value) { (engine.*setter)(Argument(value)); };
}

Setter by(void (ZephrinMDSP::*setter)(AgcMode, REAL), AgcMode mode)
{
    return [=](ZephrinMDSP &engine, double value) { (engine.*setter)(mode, value); };
}

constexpr auto kNr = [](ZephrinMDSP &engine) { engine.setNr(0, true); };
constexpr auto kAnf = [](ZephrinMDSP &engine) { engine.setAnf(0, true); };
constexpr auto kApf = [](ZephrinMDSP &engine) { engine.setApf(0, true); };
constexpr auto kDse = [](ZephrinMDSP &engine) { engine.setDse(0, true); };
constexpr auto kNb1 = [](ZephrinMDSP &engine) { engine.setNb1(0, true); };
constexpr auto kNb2 = [](ZephrinMDSP &engine) { engine.setNb2(0, true); };
constexpr auto kPlain = [](ZephrinMDSP &) {};

template <AgcMode mode>
constexpr auto kAgc = [](ZephrinMDSP &engine) {
    engine.setAgcMode(mode);
    engine.setAgcGain(0, 60);
};

template <AgcMode mode>
std::vector<Kept> agcRows(const char *(&&keys)[3], const char *(&&controls)[3])
{
    using Engine = ZephrinMDSP;
    return {
        {keys[0], controls[0], Modulation::USB, kAgc<mode>, by(&Engine::setAgcAttack, mode), 0.3},
        {keys[1], controls[1], Modulation::USB, kAgc<mode>, by(&Engine::setAgcDecay, mode), 33.0},
        {keys[2], controls[2], Modulation::USB, kAgc<mode>, by(&Engine::setAgcHangTime, mode),
            22.0}};
}

std::vector<Kept> all()
{
    using Engine = ZephrinMDSP;
    constexpr auto USB = Modulation::USB, CW = Modulation::CW;
    std::vector<Kept> rows{
        {"dsp_nr_taps", "sbNrTaps", USB, kNr, by(&Engine::setNrTaps), 120},
        {"dsp_nr_delay", "sbNrDelay", USB, kNr, by(&Engine::setNrDelay), 9},
        {"dsp_nr_rate", "dsbNrRate", USB, kNr, by(&Engine::setNrRate), 0.01},
        {"dsp_nr_leak", "dsbNrLeak", USB, kNr, by(&Engine::setNrLeak), 0.01},
        {"dsp_anf_taps", "sbAnfTaps", USB, kAnf, by(&Engine::setAnfTaps), 120},
        {"dsp_anf_delay", "sbAnfDelay", USB, kAnf, by(&Engine::setAnfDelay), 9},
        {"dsp_anf_rate", "dsbAnfRate", USB, kAnf, by(&Engine::setAnfRate), 0.01},
        {"dsp_anf_leak", "dsbAnfLeak", USB, kAnf, by(&Engine::setAnfLeak), 0.01},
        {"dsp_nb1_thr", "dsbNb1Threshold", USB, kNb1, by(&Engine::setNb1Threshold), 1.2},
        {"dsp_nb2_thr", "dsbNb2Threshold", USB, kNb2, by(&Engine::setNb2Threshold), 1.2},
        {"dsp_apf_gain", "sbApfCwGain", CW, kApf, by(&Engine::setCwApfGain), 12},
        {"dsp_apf_quolity", "sbApfCwQuality", CW, kApf, by(&Engine::setCwApfQuality), 11},
        {"dsp_apf_ssb_gain", "sbApfSsbGain", USB, kApf, by(&Engine::setSsbApfGain), 12},
        {"dsp_apf_ssb_quolity", "dsbApfSsbQuality", USB, kApf, by(&Engine::setSsbApfQuality), 4},
        {"dsp_apf_ssb_freq", "sbApfSsbFreq", USB, kApf, by(&Engine::setSsbApfFreq), 900},
        {"dsp_dse_taps", "sbDseTaps", CW, kDse, by(&Engine::setDseQuality), 150},
        {"dsp_dse_swap", "chbDseSwap", CW, kDse, by(&Engine::setDseSwap), 1},
        {"dsp_digl_offset", "sbDiglOffset", Modulation::DIGL, kPlain, by(&Engine::setDiglOffset),
            900},
        {"dsp_digu_offset", "sbDiguOffset", Modulation::DIGU, kPlain, by(&Engine::setDiguOffset),
            900},
        {"cw_pitch", "sbCwPitch", CW, kPlain, by(&Engine::setCwTone), 500},
    };
    for (const auto &more :
        {agcRows<AgcMode::Long>({"agc_long_Attack", "agc_long_Decay", "agc_long_hangTime"},
             {"dsbAgcLongAttack", "dsbAgcLongDecay", "sbAgcLongHangTime"}),
            agcRows<AgcMode::Slow>({"agc_slow_Attack", "agc_slow_Decay", "agc_slow_hangTime"},
                {"dsbAgcSlowAttack", "dsbAgcSlowDecay", "sbAgcSlowHangTime"}),
            agcRows<AgcMode::Med>({"agc_med_Attack", "agc_med_Decay", "agc_med_hangTime"},
                {"dsbAgcMedAttack", "dsbAgcMedDecay", "sbAgcMedHangTime"}),
            agcRows<AgcMode::Fast>({"agc_fast_Attack", "agc_fast_Decay", "agc_fast_hangTime"},
                {"dsbAgcFastAttack", "dsbAgcFastDecay", "sbAgcFastHangTime"}),
            agcRows<AgcMode::User>({"agc_user_Attack", "agc_user_Decay", "agc_user_hangTime"},
                {"dsbAgcUserAttack", "dsbAgcUserDecay", "sbAgcUserHangTime"})})
        rows.insert(rows.end(), more.begin(), more.end());
    return rows;
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

    std::vector<COMPLEX32> heard(int blocks)
    {
        constexpr std::size_t kLoud = 12000; // samples; then the gain is free to rise
        constexpr double kToneA = 600.0 / 48000.0, kToneB = 1900.0 / 48000.0; // cycles a sample
        auto stream = test::noise(blocks * kBlock, /*seed*/ 3);
        const auto a = test::tone(blocks * kBlock, kToneA, 0.02, 0.0, 0);
        const auto b = test::tone(blocks * kBlock, kToneB, 0.02, 0.0, 0);
        for (std::size_t i = 0; i < stream.size(); ++i) {
            const double level = i < kLoud ? 1.0 : 0.05;
            const double impulse = i < kLoud && i % 997 == 0 ? 0.5 : 0.0;
            stream[i] = {level * (a[i].re + b[i].re + 1e-3 * stream[i].re) + impulse,
                level * (a[i].im + b[i].im + 1e-3 * stream[i].im)};
        }
        play(stream);
        engine.close();
        return soundCard;
    }

    void TestBody() override { }
    using EngineTest::engine;
};

bool same(const std::vector<COMPLEX32> &a, const std::vector<COMPLEX32> &b)
{
    return !a.empty() && a.size() == b.size()
        && std::equal(a.begin(), a.end(), b.begin(),
            [](auto x, auto y) { return x.re == y.re && x.im == y.im; });
}

class PageAndEngine : public testing::TestWithParam<Kept>
{
protected:
    static void SetUpTestSuite()
    {
        qRegisterMetaType<AgcMode>("AgcMode");
        qRegisterMetaType<double>("REAL");
    }

    static std::vector<COMPLEX32> heard(const std::function<void(ZephrinMDSP &)> &setUp)
    {
        Listening listening(GetParam().mode);
        GetParam().use(listening.engine);
        setUp(listening.engine);
        // A gain control is heard after its hang time only, a second at the longest.
        return listening.heard(QByteArray(GetParam().key).startsWith("agc") ? 200 : 60);
    }

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
    }
};

TEST_P(PageAndEngine, AgreeAtTheStartAndAfterReadingWhatTheFormShows)
{
    const Kept &kept = GetParam();
    const double form = test::shown(ZephrinMOptions(), kept.control);
    const auto told = heard([&](ZephrinMDSP &engine) { kept.set(engine, form); });
    const auto otherwise = heard([&](ZephrinMDSP &engine) { kept.set(engine, kept.other); });
    EXPECT_FALSE(same(told, otherwise)); // it would be heard
    // The blankers start with a power whose root the form rounds.
    const bool isRounded = QByteArray(kept.key).startsWith("dsp_nb");
    EXPECT_TRUE(isRounded || same(told, heard(kPlain)));
    EXPECT_TRUE(same(told, heard([&](ZephrinMDSP &engine) {
        kept.set(engine, kept.other); // whatever it was
        read(engine);
    })));
}

INSTANTIATE_TEST_SUITE_P(Keys, PageAndEngine, testing::ValuesIn(all()),
    [](const auto &info) { return std::string(info.param.key); });

TEST(PageAndEngineTest, EachModeClassStartsWithItsOwnFilterLength)
{
    const struct
    {
        Modulation mode;
        const char *control;
        void (ZephrinMDSP::*set)(int);
    } rows[] = {{Modulation::USB, "sbFilterTapsSsb", &ZephrinMDSP::setSsbFilterTaps},
        {Modulation::AM, "sbFilterTapsAm", &ZephrinMDSP::setAmFilterTaps},
        {Modulation::DIGU, "sbFilterTapsDig", &ZephrinMDSP::setDigFilterTaps},
        {Modulation::CW, "sbFilterTapsCw", &ZephrinMDSP::setCwFilterTaps}};
    for (const auto &row : rows) {
        ZephrinMOptions page;
        Listening started(row.mode), told(row.mode), shorter(row.mode);
        ZephrinMInterface::joinEngine(page, started.engine);
        page.onUpdate();
        const int taps = int(test::shown(page, row.control));
        (told.engine.*row.set)(taps);
        (shorter.engine.*row.set)(taps - 2);
        constexpr int kBlocks = 40;
        const auto heard = told.heard(kBlocks);
        EXPECT_TRUE(same(heard, started.heard(kBlocks))) << row.control;
        EXPECT_FALSE(same(heard, shorter.heard(kBlocks))) << row.control;
    }
}
} // namespace
