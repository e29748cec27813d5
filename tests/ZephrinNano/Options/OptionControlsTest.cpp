// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options/OptionControls.h"
#include "Options/ZephrinMOptions.h"
#include "OptionsTest.h"

#include <QFile>
#include <QMetaMethod>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>

namespace
{
using DspCore::AgcMode;
using test::shown;

/// What a user's file and eyes know of a control.
struct Key
{
    const char *key;
    const char *control;
    const char *stored; // as text of the file; other than the form starts with
    double value;       // what the control shows then
    double preset;      // without the key
    double minimum;     // as maximum: a check box
    double maximum;
    const char *signal;
    AgcMode mode = AgcMode::Off;
};

constexpr char kAttack[] = "agcAttackChanged(AgcMode,REAL)";
constexpr char kDecay[] = "agcDecayChanged(AgcMode,REAL)";
constexpr char kHang[] = "agcHangTimeChanged(AgcMode,REAL)";

const Key kKeys[] = {
    {"SampleRate", "cbSampleRate", "7", 7, 1, 0, 8, "sampleRateChanged(int)"},
    {"Lpf", "chbLpf", "false", 0, 1, 0, 0, "bypassChanged(bool)"},
    {"PreampAuto", "chbPreamp", "true", 1, 1, 0, 0, "preampAutoChanged(bool)"},
    {"agc_long_Attack", "dsbAgcLongAttack", "0.3", 0.3, 2.5, 0.1, 2.5, kAttack, AgcMode::Long},
    {"agc_long_Decay", "dsbAgcLongDecay", "11", 11, 800, 10, 5000, kDecay, AgcMode::Long},
    {"agc_long_hangTime", "sbAgcLongHangTime", "12", 12, 800, 10, 5000, kHang, AgcMode::Long},
    {"agc_slow_Attack", "dsbAgcSlowAttack", "0.4", 0.4, 2.0, 0.1, 2.5, kAttack, AgcMode::Slow},
    {"agc_slow_Decay", "dsbAgcSlowDecay", "13.25", 13.25, 500, 10, 5000, kDecay, AgcMode::Slow},
    {"agc_slow_hangTime", "sbAgcSlowHangTime", "14", 14, 500, 10, 5000, kHang, AgcMode::Slow},
    {"agc_med_Attack", "dsbAgcMedAttack", "0.5", 0.5, 1.7, 0.1, 2.5, kAttack, AgcMode::Med},
    {"agc_med_Decay", "dsbAgcMedDecay", "15", 15, 250, 10, 5000, kDecay, AgcMode::Med},
    {"agc_med_hangTime", "sbAgcMedHangTime", "16", 16, 250, 10, 5000, kHang, AgcMode::Med},
    {"agc_fast_Attack", "dsbAgcFastAttack", "0.6", 0.6, 1.2, 0.1, 2.5, kAttack, AgcMode::Fast},
    {"agc_fast_Decay", "dsbAgcFastDecay", "17", 17, 100, 10, 5000, kDecay, AgcMode::Fast},
    {"agc_fast_hangTime", "sbAgcFastHangTime", "18", 18, 100, 10, 5000, kHang, AgcMode::Fast},
    {"agc_user_Attack", "dsbAgcUserAttack", "0.7", 0.7, 2.5, 0.1, 2.5, kAttack, AgcMode::User},
    {"agc_user_Decay", "dsbAgcUserDecay", "19", 19, 1000, 10, 5000, kDecay, AgcMode::User},
    {"agc_user_hangTime", "sbAgcUserHangTime", "20", 20, 1000, 10, 5000, kHang, AgcMode::User},
    {"dsp_nr_taps", "sbNrTaps", "101", 101, 98, 1, 257, "nrTapsChanged(int)"},
    {"dsp_nr_delay", "sbNrDelay", "102", 102, 20, 1, 257, "nrDelayChanged(int)"},
    {"dsp_nr_rate", "dsbNrRate", "0.25", 0.25, 0.001, 1e-6, 1, "nrRateChanged(double)"},
    {"dsp_nr_leak", "dsbNrLeak", "3e-05", 3e-5, 2e-5, 1e-6, 1, "nrLeakChanged(double)"},
    {"dsp_anf_taps", "sbAnfTaps", "103", 103, 65, 1, 257, "anfTapsChanged(int)"},
    {"dsp_anf_delay", "sbAnfDelay", "104", 104, 64, 1, 257, "anfDelayChanged(int)"},
    {"dsp_anf_rate", "dsbAnfRate", "0.5", 0.5, 0.0007, 1e-6, 1, "anfRateChanged(double)"},
    {"dsp_anf_leak", "dsbAnfLeak", "4e-05", 4e-5, 1e-5, 1e-6, 1, "anfLeakChanged(double)"},
    {"dsp_nb1_thr", "dsbNb1Threshold", "3.21", 3.21, 2.65, 0.01, 20, "nb1ThresholdChanged(double)"},
    {"dsp_nb2_thr", "dsbNb2Threshold", "4.32", 4.32, 2.48, 0.01, 20, "nb2ThresholdChanged(double)"},
    {"dsp_apf_gain", "sbApfCwGain", "31", 31, 30, 6, 60, "apfCwGainChanged(int)"},
    {"dsp_apf_quolity", "sbApfCwQuality", "7", 7, 5, 1, 20, "apfCwQualityChanged(int)"},
    {"dsp_apf_ssb_gain", "sbApfSsbGain", "21", 21, 20, 3, 60, "apfSsbGainChanged(int)"},
    {"dsp_apf_ssb_quolity", "dsbApfSsbQuality", "2.7", 2, 1, 0.1, 10,
        "apfSsbQualityChanged(double)"},
    {"dsp_apf_ssb_freq", "sbApfSsbFreq", "1234", 1234, 500, 200, 2000, "apfSsbFreqChanged(int)"},
    {"dsp_dse_taps", "sbDseTaps", "150", 150, 200, 140, 250, "dseQualityChanged(int)"},
    {"dsp_dse_swap", "chbDseSwap", "true", 1, 0, 0, 0, "dseSwapChanged(bool)"},
    {"dsp_wfm_usa", "chbWfmUsa", "true", 1, 0, 0, 0, "wfmUsaChanged(bool)"},
    {"fir_taps_ssb", "sbFilterTapsSsb", "3000", 1525, 1525, 500, 7681, "filterTapsSsbChanged(int)"},
    {"fir_taps_am", "sbFilterTapsAm", "3000", 1521, 1521, 500, 7681, "filterTapsAmChanged(int)"},
    {"fir_taps_dig", "sbFilterTapsDig", "3000", 1523, 1523, 500, 7681, "filterTapsDigChanged(int)"},
    {"fir_taps_cw", "sbFilterTapsCw", "3000", 1529, 1529, 500, 7681, "filterTapsCwChanged(int)"},
    {"dsp_digl_offset", "sbDiglOffset", "1111", 1111, 2200, 2, 10000, "diglOffsetChanged(int)"},
    {"dsp_digu_offset", "sbDiguOffset", "2222", 2222, 1500, 2, 10000, "diguOffsetChanged(int)"},
    {"cw_pitch", "sbCwPitch", "666", 666, 700, 300, 1000, "cwPitchChanged(int)"},
};

/// Lets the page read a file with the given lines in its group; what it writes into it then.
QSettings::SettingsMap through(ZephrinMOptions &page, const QByteArray &lines = {})
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("device.ini"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[ZephrinMOptions]\n" + lines);
    file.close();
    QSettings settings(file.fileName(), QSettings::IniFormat);
    page.readSettings(&settings);
    EXPECT_TRUE(settings.group().isEmpty());
    page.writeSettings(&settings);
    QSettings::SettingsMap written;
    for (const QString &key : settings.allKeys())
        written[key.section('/', 1)] = settings.value(key);
    return written;
}

/// All that a page tells while it lives.
class Told
{
public:
    explicit Told(const ZephrinMOptions &page)
    {
        qRegisterMetaType<AgcMode>("AgcMode");
        qRegisterMetaType<double>("REAL");
        for (const Key &key : kKeys) {
            const int signal = page.metaObject()->indexOfSignal(key.signal);
            EXPECT_GE(signal, 0) << key.signal;
            m_spies.push_back(
                std::make_unique<QSignalSpy>(&page, page.metaObject()->method(signal)));
        }
    }

    /// The values that were told of the n-th key.
    std::vector<double> of(std::size_t n) const
    {
        std::vector<double> values;
        for (const QVariantList &arguments : *m_spies[n]) {
            const auto mode = *static_cast<const AgcMode *>(arguments.first().constData());
            if (arguments.size() == 1 || mode == kKeys[n].mode)
                values.push_back(arguments.last().toDouble());
        }
        return values;
    }

private:
    std::vector<std::unique_ptr<QSignalSpy>> m_spies; // by key
};

bool isFilterLength(const Key &key)
{
    return QByteArray(key.key).startsWith("fir_");
}

/// Reads a file and checks that each key is shown, told each time and written.
void expectRead(const QByteArray &lines, double Key::*value)
{
    ZephrinMOptions page;
    const Told told(page);
    through(page, lines);
    const auto written = through(page, lines); // told again, though the form shows it
    for (std::size_t n = 0; n < std::size(kKeys); ++n) {
        const Key &key = kKeys[n];
        SCOPED_TRACE(key.key);
        const double expected = key.*value;
        EXPECT_DOUBLE_EQ(shown(page, key.control), expected);
        const double heard = QByteArray(key.key) == "Lpf" ? 1.0 - expected : expected;
        EXPECT_EQ(told.of(n), std::vector<double>(isFilterLength(key) ? 0 : 2, heard));
        const QVariant stored = written[key.key];
        EXPECT_DOUBLE_EQ(stored.toString() == "true" ? 1.0 : stored.toDouble(), expected);
    }
}

TEST(OptionControlsTest, EachKeyIsReadToldAndWritten)
{
    QByteArray text;
    for (const Key &key : kKeys)
        text += QByteArray(key.key) + "=" + key.stored + "\n";
    expectRead(text, &Key::value);
    expectRead({}, &Key::preset);
}

TEST(OptionControlsTest, BothOffsetsAreToldOnceARead)
{
    ZephrinMOptions page;
    through(page);
    QSignalSpy offsets(&page, &ZephrinMOptions::digOffsetChanged);
    through(page);
    EXPECT_EQ(offsets, (QList<QVariantList>{{-2200, 1500}}));
}

TEST(OptionControlsTest, ControlsHaveTheirRanges)
{
    ZephrinMOptions page;
    for (const Key &key : kKeys) {
        if (key.minimum == key.maximum || QByteArray(key.key) == "SampleRate")
            continue;
        for (const auto &[asked, limited] :
            {std::pair{-1e6, key.minimum}, std::pair{1e6, key.maximum}}) {
            test::turn(page, key.control, asked);
            EXPECT_DOUBLE_EQ(shown(page, key.control), limited) << key.key;
        }
    }
}

// One of each kind of control.
TEST(OptionControlsTest, NonsenseInTheFileIsLimitedOrReplaced)
{
    const struct
    {
        const char *key;
        const char *control;
        double preset, minimum, maximum;
    } rows[] = {{"SampleRate", "cbSampleRate", 1, 0, 8}, {"Lpf", "chbLpf", 1, 1, 1},
        {"dsp_nr_taps", "sbNrTaps", 98, 1, 257}, {"dsp_nb1_thr", "dsbNb1Threshold", 2.65, 0.01, 20},
        {"dsp_apf_ssb_quolity", "dsbApfSsbQuality", 1, 0.1, 10}};
    ZephrinMOptions page;
    const auto expect = [&](const auto &row, const char *stored, double value) {
        through(page, row.key + (QByteArray("=") + stored) + "\n");
        EXPECT_EQ(shown(page, row.control), value) << row.key << stored;
    };
    for (const auto &row : rows) {
        for (const char *garbage : {"", "abc", "nan", "12 34", "@Invalid()", "@ByteArray(x)"})
            expect(row, garbage, row.preset);
        for (const char *low : {"-1e300", "-1"})
            expect(row, low, row.minimum);
        for (const char *high : {"1e300", "inf", "99999999999"})
            expect(row, high, row.maximum);
    }
    for (const auto &[stored, value] :
        {std::pair{"2.7", 2.0}, {"2.2", 2.0}, {"0.8", 0.1}, {"9.99", 9.0}, {"10.9", 10.0}})
        expect(rows[4], stored, value);
}

TEST(OptionControlsTest, ButtonsPutBackWhatAToolWorksWellWith)
{
    // Where a button differs from the value without a file, and the controls that have none.
    const QMap<QByteArray, double> others{{"dsp_apf_ssb_quolity", 0.8}, {"dsp_apf_ssb_freq", 550},
        {"fir_taps_ssb", 1570}, {"fir_taps_am", 1570}, {"fir_taps_dig", 1570},
        {"fir_taps_cw", 1570}};
    const QSet<QByteArray> kept{"SampleRate", "Lpf", "PreampAuto", "agc_user_Attack",
        "agc_user_Decay", "agc_user_hangTime", "dsp_dse_swap", "dsp_wfm_usa", "cw_pitch"};
    ZephrinMOptions page;
    for (const Key &key : kKeys)
        test::turn(page, key.control, key.minimum);
    for (auto *const button : page.findChildren<QPushButton *>())
        if (button->objectName().startsWith("btnDefault"))
            button->click();
    for (const Key &key : kKeys)
        EXPECT_DOUBLE_EQ(shown(page, key.control),
            kept.contains(key.key) ? key.minimum : others.value(key.key, key.preset))
            << key.key;

    // Each button has its own tool.
    test::turn(page, "sbNrTaps", 7);
    page.onDefaultANF();
    EXPECT_EQ(shown(page, "sbNrTaps"), 7);
    page.onDefaultNR();
    EXPECT_EQ(shown(page, "sbNrTaps"), 98);
}
} // namespace
