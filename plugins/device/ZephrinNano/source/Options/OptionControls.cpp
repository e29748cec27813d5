// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options/OptionControls.h"

#include "Options/ZephrinMOptions.h"
#include "ui_ZephrinMOptions.h"

#include <QSettings>
#include <algorithm>
#include <cmath>
#include <limits>
#include <variant>

namespace
{
using DspCore::AgcMode;
using Form = Ui_ZephrinMOptions;
using Page = ZephrinMOptions;

using Control = std::variant<QSpinBox * Form::*, QDoubleSpinBox * Form::*, QCheckBox * Form::*,
    QComboBox * Form::*>;
using Button = QPushButton *Form::*;

struct AgcTime
{
    OptionControls::AgcSignal signal;
    AgcMode mode;
};
using Told =
    std::variant<void (Page::*)(int), void (Page::*)(double), void (Page::*)(bool), AgcTime>;

// A key with this default is written and never read.
constexpr double kNeverRead = std::numeric_limits<double>::quiet_NaN();

template <typename... Acts>
struct Overloaded : Acts...
{
    using Acts::operator()...;
};
template <typename... Acts>
Overloaded(Acts...) -> Overloaded<Acts...>;

constexpr auto changed(const QSpinBox &)
{
    return qOverload<int>(&QSpinBox::valueChanged);
}

constexpr auto changed(const QDoubleSpinBox &)
{
    return qOverload<double>(&QDoubleSpinBox::valueChanged);
}

constexpr auto changed(const QCheckBox &)
{
    return &QCheckBox::toggled;
}

constexpr auto changed(const QComboBox &)
{
    return qOverload<int>(&QComboBox::currentIndexChanged);
}

int shown(const QSpinBox &box)
{
    return box.value();
}

double shown(const QDoubleSpinBox &box)
{
    return box.value();
}

bool shown(const QCheckBox &box)
{
    return box.isChecked();
}

int shown(const QComboBox &box)
{
    return box.currentIndex();
}

// Limited before it is converted: an int cannot hold every number that a file can.
void show(QSpinBox &box, double value)
{
    box.setValue(int(std::clamp(value, double(box.minimum()), double(box.maximum()))));
}

void show(QDoubleSpinBox &box, double value)
{
    box.setValue(std::clamp(value, box.minimum(), box.maximum()));
}

void show(QCheckBox &box, double value)
{
    box.setChecked(value != 0.0);
}

void show(QComboBox &box, double value)
{
    box.setCurrentIndex(int(std::clamp(value, 0.0, double(box.count() - 1))));
}

double toNumber(const QWidget &, const QVariant &stored, double preset)
{
    bool ok = false;
    const double value = stored.toDouble(&ok);
    return ok && !std::isnan(value) ? value : preset;
}

// Files hold words; QVariant by itself takes every word but "false" for true.
double toNumber(const QCheckBox &, const QVariant &stored, double preset)
{
    const QString text = stored.toString().toLower();
    if (text == "true" || text == "1")
        return 1.0;
    return text == "false" || text == "0" ? 0.0 : preset;
}
} // namespace

struct OptionControls::Row
{
    const char *key; // its spelling is what files of users have; null: not stored
    Control control;
    Told told;
    double preset; // without a value in the file
    Button button = nullptr;
    std::optional<double> putBack = {}; // by the button; nothing: the preset
    bool isWhole = false;               // read without its fraction, written with it
};

// In the order in which they are read and written. What a button puts back differs on purpose from
// the preset in the peak filter of SSB.
const OptionControls::Row OptionControls::kRows[] = {
    {"SampleRate", &Form::cbSampleRate, &Page::sampleRateChanged, 1}, // place in the list
    {"Lpf", &Form::chbLpf, &Page::onLpf, true},
    {"PreampAuto", &Form::chbPreamp, &Page::preampAutoChanged, true},

    // ms
    {"agc_long_Attack", &Form::dsbAgcLongAttack, AgcTime{&Page::agcAttackChanged, AgcMode::Long},
        2.5, &Form::btnDefaultAgcLong},
    {"agc_long_Decay", &Form::dsbAgcLongDecay, AgcTime{&Page::agcDecayChanged, AgcMode::Long}, 800,
        &Form::btnDefaultAgcLong},
    {"agc_long_hangTime", &Form::sbAgcLongHangTime,
        AgcTime{&Page::agcHangTimeChanged, AgcMode::Long}, 800, &Form::btnDefaultAgcLong},
    {"agc_slow_Attack", &Form::dsbAgcSlowAttack, AgcTime{&Page::agcAttackChanged, AgcMode::Slow},
        2.0, &Form::btnDefaultAgcSlow},
    {"agc_slow_Decay", &Form::dsbAgcSlowDecay, AgcTime{&Page::agcDecayChanged, AgcMode::Slow}, 500,
        &Form::btnDefaultAgcSlow},
    {"agc_slow_hangTime", &Form::sbAgcSlowHangTime,
        AgcTime{&Page::agcHangTimeChanged, AgcMode::Slow}, 500, &Form::btnDefaultAgcSlow},
    {"agc_med_Attack", &Form::dsbAgcMedAttack, AgcTime{&Page::agcAttackChanged, AgcMode::Med}, 1.7,
        &Form::btnDefaultAgcMed},
    {"agc_med_Decay", &Form::dsbAgcMedDecay, AgcTime{&Page::agcDecayChanged, AgcMode::Med}, 250,
        &Form::btnDefaultAgcMed},
    {"agc_med_hangTime", &Form::sbAgcMedHangTime, AgcTime{&Page::agcHangTimeChanged, AgcMode::Med},
        250, &Form::btnDefaultAgcMed},
    {"agc_fast_Attack", &Form::dsbAgcFastAttack, AgcTime{&Page::agcAttackChanged, AgcMode::Fast},
        1.2, &Form::btnDefaultAgcFast},
    {"agc_fast_Decay", &Form::dsbAgcFastDecay, AgcTime{&Page::agcDecayChanged, AgcMode::Fast}, 100,
        &Form::btnDefaultAgcFast},
    {"agc_fast_hangTime", &Form::sbAgcFastHangTime,
        AgcTime{&Page::agcHangTimeChanged, AgcMode::Fast}, 100, &Form::btnDefaultAgcFast},
    {"agc_user_Attack", &Form::dsbAgcUserAttack, AgcTime{&Page::agcAttackChanged, AgcMode::User},
        2.5},
    {"agc_user_Decay", &Form::dsbAgcUserDecay, AgcTime{&Page::agcDecayChanged, AgcMode::User},
        1000},
    {"agc_user_hangTime", &Form::sbAgcUserHangTime,
        AgcTime{&Page::agcHangTimeChanged, AgcMode::User}, 1000},

    // taps, samples, then two without a unit
    {"dsp_nr_taps", &Form::sbNrTaps, &Page::nrTapsChanged, 98, &Form::btnDefaultNr},
    {"dsp_nr_delay", &Form::sbNrDelay, &Page::nrDelayChanged, 20, &Form::btnDefaultNr},
    {"dsp_nr_rate", &Form::dsbNrRate, &Page::nrRateChanged, 0.001, &Form::btnDefaultNr},
    {"dsp_nr_leak", &Form::dsbNrLeak, &Page::nrLeakChanged, 2e-05, &Form::btnDefaultNr},
    {"dsp_anf_taps", &Form::sbAnfTaps, &Page::anfTapsChanged, 65, &Form::btnDefaultAnf},
    {"dsp_anf_delay", &Form::sbAnfDelay, &Page::anfDelayChanged, 64, &Form::btnDefaultAnf},
    {"dsp_anf_rate", &Form::dsbAnfRate, &Page::anfRateChanged, 0.0007, &Form::btnDefaultAnf},
    {"dsp_anf_leak", &Form::dsbAnfLeak, &Page::anfLeakChanged, 1e-05, &Form::btnDefaultAnf},

    // times the mean amplitude
    {"dsp_nb1_thr", &Form::dsbNb1Threshold, &Page::nb1ThresholdChanged, 2.65, &Form::btnDefaultNb1},
    {"dsp_nb2_thr", &Form::dsbNb2Threshold, &Page::nb2ThresholdChanged, 2.48, &Form::btnDefaultNb2},

    // dB, sharpness, Hz
    {"dsp_apf_gain", &Form::sbApfCwGain, &Page::apfCwGainChanged, 30, &Form::btnDefaultApfCw},
    {"dsp_apf_quolity", &Form::sbApfCwQuality, &Page::apfCwQualityChanged, 5,
        &Form::btnDefaultApfCw},
    {"dsp_apf_ssb_gain", &Form::sbApfSsbGain, &Page::apfSsbGainChanged, 20,
        &Form::btnDefaultApfSsb},
    {"dsp_apf_ssb_quolity", &Form::dsbApfSsbQuality, &Page::apfSsbQualityChanged, 1.0,
        &Form::btnDefaultApfSsb, 0.8, true},
    {"dsp_apf_ssb_freq", &Form::sbApfSsbFreq, &Page::apfSsbFreqChanged, 500,
        &Form::btnDefaultApfSsb, 550},

    {"dsp_dse_taps", &Form::sbDseTaps, &Page::dseQualityChanged, 200, &Form::btnDefaultDse}, // taps
    {"dsp_dse_swap", &Form::chbDseSwap, &Page::dseSwapChanged, false},
    {"dsp_wfm_usa", &Form::chbWfmUsa, &Page::wfmUsaChanged, false},

    // taps; the lengths start anew each time
    {"fir_taps_ssb", &Form::sbFilterTapsSsb, &Page::filterTapsSsbChanged, kNeverRead,
        &Form::btnDefaultFilterTaps, 1570},
    {"fir_taps_am", &Form::sbFilterTapsAm, &Page::filterTapsAmChanged, kNeverRead,
        &Form::btnDefaultFilterTaps, 1570},
    {"fir_taps_dig", &Form::sbFilterTapsDig, &Page::filterTapsDigChanged, kNeverRead,
        &Form::btnDefaultFilterTaps, 1570},
    {"fir_taps_cw", &Form::sbFilterTapsCw, &Page::filterTapsCwChanged, kNeverRead,
        &Form::btnDefaultFilterTaps, 1570},

    // Hz
    {"dsp_digl_offset", &Form::sbDiglOffset, &Page::diglOffsetChanged, 2200,
        &Form::btnDefaultDigOffset},
    {"dsp_digu_offset", &Form::sbDiguOffset, &Page::diguOffsetChanged, 1500,
        &Form::btnDefaultDigOffset},
    {"cw_pitch", &Form::sbCwPitch, &Page::cwPitchChanged, 700},

    // dB and factors, which the receiver stores; a switch of it
    {nullptr, &Form::dsbUserPreampCoeff, &Page::userPreampCoeffChanged, kNeverRead},
    {nullptr, &Form::dsbUserFreqCoeff, &Page::userPreampFreqChanged, kNeverRead},
    {nullptr, &Form::dsbAdminPreampCoeff, &Page::adminPreampCoeffChanged, kNeverRead},
    {nullptr, &Form::dsbAdminFreqCoeff, &Page::adminPreampFreqChanged, kNeverRead},
    {nullptr, &Form::chbAdcReset, &Page::adcResetChanged, kNeverRead},
};

OptionControls::OptionControls(ZephrinMOptions &page, const Ui_ZephrinMOptions &form)
    : m_page(page), m_form(form)
{
    QPushButton *known = nullptr; // rows of one button stand together
    for (const Row &row : kRows) {
        connectControl(row);
        QPushButton *const button = row.button ? m_form.*row.button : nullptr;
        if (button && button != known)
            QObject::connect(
                button, &QPushButton::clicked, &m_page, [this, button] { putBack(button); });
        known = button;
    }
}

template <typename Act>
auto OptionControls::with(const Row &row, Act act) const
{
    return std::visit([&](auto member) { return act(*(m_form.*member)); }, row.control);
}

/// The times of the gain control share a slot each, which knows the mode by its sender.
void OptionControls::connectControl(const Row &row)
{
    const auto *const time = std::get_if<AgcTime>(&row.told);
    with(row, [&](auto &box) {
        using Box = std::decay_t<decltype(box)>;
        if constexpr (std::is_same_v<Box, QDoubleSpinBox>) {
            if (time) {
                QObject::connect(&box, changed(box), &m_page,
                    time->signal == &Page::agcAttackChanged ? &Page::onAgcAttack
                                                            : &Page::onAgcDecay);
                return;
            }
        } else if constexpr (std::is_same_v<Box, QSpinBox>) {
            if (time) {
                QObject::connect(&box, changed(box), &m_page, &Page::onAgcHangTime);
                return;
            }
        }
        QObject::connect(
            &box, changed(box), &m_page, [this, &row](double value) { tell(row, value); });
    });
}

void OptionControls::tell(const Row &row, double value) const
{
    std::visit(Overloaded{
                   [&](void (Page::*signal)(int)) { (m_page.*signal)(int(value)); },
                   [&](void (Page::*signal)(double)) { (m_page.*signal)(value); },
                   [&](void (Page::*signal)(bool)) { (m_page.*signal)(value != 0.0); },
                   [&](const AgcTime &time) { (m_page.*time.signal)(time.mode, value); },
               },
        row.told);
}

void OptionControls::read(const QSettings &settings) const
{
    for (const Row &row : kRows) {
        if (!row.key || std::isnan(row.preset))
            continue;
        with(row, [&](auto &box) {
            const auto before = shown(box);
            const double value = toNumber(box, settings.value(row.key), row.preset);
            show(box, row.isWhole ? std::trunc(value) : value);
            if (shown(box) == before) // the box has told a change by itself
                tell(row, double(before));
        });
    }
}

void OptionControls::write(QSettings &settings) const
{
    for (const Row &row : kRows)
        if (row.key)
            settings.setValue(row.key, with(row, [](auto &box) { return QVariant(shown(box)); }));
}

void OptionControls::putBack(const QPushButton *button) const
{
    for (const Row &row : kRows)
        if (row.button && m_form.*row.button == button)
            with(row, [&](auto &box) { show(box, row.putBack.value_or(row.preset)); });
}

const OptionControls::Row *OptionControls::agcRow(AgcMode mode, AgcSignal signal)
{
    const auto *const row = std::find_if(std::begin(kRows), std::end(kRows), [&](const Row &row) {
        const auto *const time = std::get_if<AgcTime>(&row.told);
        return time && time->mode == mode && time->signal == signal;
    });
    return row == std::end(kRows) ? nullptr : row;
}

double OptionControls::agcTime(AgcMode mode, AgcSignal signal) const
{
    const Row *const row = agcRow(mode, signal);
    return row ? with(*row, [](auto &box) { return double(shown(box)); }) : 0.0;
}

void OptionControls::setAgcTime(AgcMode mode, AgcSignal signal, double ms) const
{
    if (const Row *const row = agcRow(mode, signal))
        with(*row, [&](auto &box) { show(box, ms); });
}

std::optional<AgcMode> OptionControls::agcMode(const QObject *control) const
{
    for (const Row &row : kRows)
        if (const auto *const time = std::get_if<AgcTime>(&row.told))
            if (with(row, [&](auto &box) { return static_cast<QObject *>(&box) == control; }))
                return time->mode;
    return std::nullopt;
}
