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

// One of each kind of control.
const Key kKeys[] = {
    {"SampleRate", "cbSampleRate", "7", 7, 1, 0, 8, "sampleRateChanged(int)"},
    {"Lpf", "chbLpf", "false", 0, 1, 0, 0, "bypassChanged(bool)"},
    {"agc_slow_Decay", "dsbAgcSlowDecay", "13.25", 13.25, 500, 10, 5000,
        "agcDecayChanged(AgcMode,REAL)", AgcMode::Slow},
    {"dsp_nr_taps", "sbNrTaps", "101", 101, 98, 1, 257, "nrTapsChanged(int)"},
    {"dsp_apf_ssb_quolity", "dsbApfSsbQuality", "2.7", 2, 1, 0.1, 10,
        "apfSsbQualityChanged(double)"},
    {"dsp_apf_ssb_freq", "sbApfSsbFreq", "1234", 1234, 500, 200, 2000, "apfSsbFreqChanged(int)"},
    {"fir_taps_ssb", "sbFilterTapsSsb", "3000", 1525, 1525, 500, 7681, "filterTapsSsbChanged(int)"},
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

TEST(OptionControlsTest, NonsenseInTheFileIsLimitedOrReplaced)
{
    ZephrinMOptions page;
    const auto expect = [&](const Key &key, const char *stored, double value) {
        through(page, key.key + (QByteArray("=") + stored) + "\n");
        EXPECT_EQ(shown(page, key.control), value) << key.key << stored;
    };
    const Key &whole = kKeys[3], &quality = kKeys[4];
    for (const char *garbage : {"", "abc", "nan", "@Invalid()"})
        expect(whole, garbage, whole.preset);
    expect(whole, "-1e300", whole.minimum);
    expect(whole, "99999999999", whole.maximum);
    for (const auto &[stored, value] : {std::pair{"0.8", 0.1}, {"9.99", 9.0}, {"inf", 10.0}})
        expect(quality, stored, value);
}

TEST(OptionControlsTest, ButtonsPutBackWhatAToolWorksWellWith)
{
    ZephrinMOptions page;
    for (const Key &key : kKeys)
        test::turn(page, key.control, key.minimum);
    page.onDefaultANF();
    EXPECT_EQ(shown(page, "sbNrTaps"), 1) << "another tool's";
    for (auto *const button : page.findChildren<QPushButton *>())
        if (button->objectName().startsWith("btnDefault"))
            button->click();
    for (const auto &[control, value] : {std::pair{"sbNrTaps", 98.0}, {"dsbAgcSlowDecay", 500.0},
             {"dsbApfSsbQuality", 0.8}, {"sbApfSsbFreq", 550.0}, {"sbFilterTapsSsb", 1570.0}})
        EXPECT_DOUBLE_EQ(shown(page, control), value) << control;
}
} // namespace
