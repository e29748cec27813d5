// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options/ZephrinMOptions.h"
#include "OptionsTest.h"

#include <QFile>
#include <QMetaMethod>
#include <QSettings>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <limits>

namespace
{
using DspCore::AgcMode;
using test::shown;

AgcMode modeOf(const QVariant &argument)
{
    return *static_cast<const AgcMode *>(argument.constData());
}

constexpr double kNoRange = std::numeric_limits<double>::infinity();

struct Key
{
    const char *key;
    const char *control;
    const char *stored; // as text of the file; other than the form starts with
    double value;       // what the control shows then
    double preset;      // without the key
    double minimum;     // kNoRange: a check box
    double maximum;
    const char *signal;
    AgcMode mode = AgcMode::Off;
};

void PrintTo(const Key &key, std::ostream *out)
{
    *out << key.key;
}

constexpr char kAttack[] = "agcAttackChanged(AgcMode,REAL)";
constexpr char kDecay[] = "agcDecayChanged(AgcMode,REAL)";
constexpr char kHang[] = "agcHangTimeChanged(AgcMode,REAL)";

const Key kKeys[] = {
    {"SampleRate", "cbSampleRate", "7", 7, 1, 0, 8, "sampleRateChanged(int)"},
    {"Lpf", "chbLpf", "false", 0, 1, kNoRange, 0, "bypassChanged(bool)"},
    {"PreampAuto", "chbPreamp", "true", 1, 1, kNoRange, 0, "preampAutoChanged(bool)"},
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
    {"dsp_dse_swap", "chbDseSwap", "true", 1, 0, kNoRange, 0, "dseSwapChanged(bool)"},
    {"dsp_wfm_usa", "chbWfmUsa", "true", 1, 0, kNoRange, 0, "wfmUsaChanged(bool)"},
    {"dsp_digl_offset", "sbDiglOffset", "1111", 1111, 2200, 2, 10000, "diglOffsetChanged(int)"},
    {"dsp_digu_offset", "sbDiguOffset", "2222", 2222, 1500, 2, 10000, "diguOffsetChanged(int)"},
    {"cw_pitch", "sbCwPitch", "666", 666, 700, 300, 1000, "cwPitchChanged(int)"},
};

// A settings file with the given text in the page's group, read by a page.
class File
{
public:
    explicit File(const QByteArray &text = {})
    {
        QFile file(m_path);
        file.open(QIODevice::WriteOnly);
        file.write("[ZephrinMOptions]\n" + text);
    }

    void readBy(ZephrinMOptions &page)
    {
        QSettings settings(m_path, QSettings::IniFormat);
        page.readSettings(&settings);
        EXPECT_TRUE(settings.group().isEmpty());
    }
    void writeBy(ZephrinMOptions &page)
    {
        QSettings settings(m_path, QSettings::IniFormat);
        page.writeSettings(&settings);
    }
    QVariant value(const char *key) const
    {
        return QSettings(m_path, QSettings::IniFormat).value(QString("ZephrinMOptions/") + key);
    }

private:
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("device.ini");
};

double shownAfter(const Key &key, const QByteArray &stored)
{
    ZephrinMOptions page;
    File(key.key + ("=" + stored) + "\n").readBy(page);
    return shown(page, key.control);
}

class OptionsKeyTest : public testing::TestWithParam<Key>
{
protected:
    static void SetUpTestSuite()
    {
        qRegisterMetaType<AgcMode>("AgcMode");
        qRegisterMetaType<double>("REAL");
    }
};

TEST_P(OptionsKeyTest, StoredValueIsShownToldAndWrittenAgain)
{
    const Key &key = GetParam();
    ZephrinMOptions page;
    const int signal = page.metaObject()->indexOfSignal(key.signal);
    ASSERT_GE(signal, 0) << key.signal;
    QSignalSpy told(&page, page.metaObject()->method(signal));

    File(QByteArray(key.key) + "=" + key.stored + "\n").readBy(page);
    EXPECT_DOUBLE_EQ(shown(page, key.control), key.value);

    int mine = 0; // signals with the mode of this key
    for (const QVariantList &arguments : told) {
        if (key.mode != AgcMode::Off && modeOf(arguments.first()) != key.mode)
            continue;
        ++mine;
        const bool inverted = QByteArray(key.key) == "Lpf";
        EXPECT_DOUBLE_EQ(arguments.last().toDouble(), inverted ? 1.0 - key.value : key.value);
    }
    EXPECT_EQ(mine, 1);

    File written;
    written.writeBy(page);
    const QVariant value = written.value(key.key);
    EXPECT_DOUBLE_EQ(
        key.minimum == kNoRange ? double(value.toBool()) : value.toDouble(), key.value);
}

TEST_P(OptionsKeyTest, WithoutASensibleValueTheDefaultIsTaken)
{
    const Key &key = GetParam();
    ZephrinMOptions page;
    File().readBy(page);
    EXPECT_DOUBLE_EQ(shown(page, key.control), key.preset);
    for (const char *garbage : {"", "abc", "nan", "12 34", "@Invalid()", "@ByteArray(x)"})
        EXPECT_DOUBLE_EQ(shownAfter(key, garbage), key.preset) << garbage;
}

TEST_P(OptionsKeyTest, ValueOutOfRangeIsLimited)
{
    const Key &key = GetParam();
    if (key.minimum == kNoRange)
        return;
    for (const char *low : {"-1e300", "-1", "0", "-99999999999"})
        EXPECT_DOUBLE_EQ(shownAfter(key, low), key.minimum) << low;
    for (const char *high : {"1e300", "inf", "10001", "99999999999"})
        EXPECT_DOUBLE_EQ(shownAfter(key, high), key.maximum) << high;
}

INSTANTIATE_TEST_SUITE_P(Keys, OptionsKeyTest, testing::ValuesIn(kKeys),
    [](const auto &info) { return std::string(info.param.key); });

TEST(ZephrinMOptionsSettingsTest, QualityOfTheSsbPeakLosesItsFraction)
{
    const Key *key = std::find_if(std::begin(kKeys), std::end(kKeys),
        [](const Key &row) { return QByteArray(row.key) == "dsp_apf_ssb_quolity"; });
    for (const auto &[stored, value] :
        {std::pair{"2.7", 2.0}, {"2.2", 2.0}, {"0.8", 0.1}, {"9.99", 9.0}, {"10.9", 10.0}})
        EXPECT_DOUBLE_EQ(shownAfter(*key, stored), value) << stored;
}

TEST(ZephrinMOptionsSettingsTest, FilterLengthsAreWrittenAndNeverRead)
{
    const struct
    {
        const char *key;
        const char *control;
        int initial;
    } rows[] = {{"fir_taps_ssb", "sbFilterTapsSsb", 1525}, {"fir_taps_am", "sbFilterTapsAm", 1521},
        {"fir_taps_dig", "sbFilterTapsDig", 1523}, {"fir_taps_cw", "sbFilterTapsCw", 1529}};
    for (const auto &row : rows) {
        ZephrinMOptions page;
        File file(QByteArray(row.key) + "=3000\n");
        file.readBy(page);
        EXPECT_EQ(shown(page, row.control), row.initial);
        file.writeBy(page);
        EXPECT_EQ(file.value(row.key).toInt(), row.initial);
        test::turn(page, row.control, 100000);
        file.writeBy(page);
        EXPECT_EQ(file.value(row.key).toInt(), 7681);
        test::turn(page, row.control, 0);
        EXPECT_EQ(shown(page, row.control), 500);
    }
}

// The order of the table of keys, seen by the order of the signals.
TEST(ZephrinMOptionsSettingsTest, KeysAreReadInOrder)
{
    QByteArray text;
    for (const Key &key : kKeys)
        text += QByteArray(key.key) + "=" + key.stored + "\n";
    ZephrinMOptions page;
    QStringList order;
    for (const Key &key : kKeys) {
        const QWidget *box = test::control(page, key.control);
        const auto note = [&order, &key] { order << key.key; };
        if (auto *spin = qobject_cast<const QSpinBox *>(box))
            QObject::connect(spin, qOverload<int>(&QSpinBox::valueChanged), note);
        else if (auto *real = qobject_cast<const QDoubleSpinBox *>(box))
            QObject::connect(real, qOverload<double>(&QDoubleSpinBox::valueChanged), note);
        else if (auto *check = qobject_cast<const QCheckBox *>(box))
            QObject::connect(check, &QCheckBox::toggled, note);
        else if (auto *combo = qobject_cast<const QComboBox *>(box))
            QObject::connect(combo, qOverload<int>(&QComboBox::currentIndexChanged), note);
    }
    QObject::connect(
        &page, &ZephrinMOptions::digOffsetChanged, [&order](int, int) { order << "offsets"; });
    File(text).readBy(page);

    QStringList expected;
    for (const Key &key : kKeys) {
        if (QByteArray(key.key).contains("_offset"))
            expected << "offsets";
        expected << key.key;
    }
    expected << "offsets";
    EXPECT_EQ(order, expected);
}

TEST(ZephrinMOptionsSettingsTest, OffsetsAreToldOnceAlsoWithoutKeys)
{
    ZephrinMOptions page;
    QSignalSpy offsets(&page, &ZephrinMOptions::digOffsetChanged);
    File().readBy(page);
    ASSERT_EQ(offsets.size(), 1);
    EXPECT_EQ(offsets[0], (QVariantList{-2200, 1500}));
}
} // namespace
