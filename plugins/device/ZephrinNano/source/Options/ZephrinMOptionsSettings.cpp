// SPDX-License-Identifier: GPL-3.0-or-later
// The keys of the settings file. Their spelling is what files of users have.
#include "Options/ZephrinMOptions.h"
#include "ui_ZephrinMOptions.h"

#include <QSettings>

namespace
{
constexpr char kGroup[] = "ZephrinMOptions";
} // namespace

void ZephrinMOptions::readSettings(QSettings *settings)
{
    settings->beginGroup(kGroup);
    m_stored.read(*settings);
    // Once in any case: the host has no other source of the offsets.
    onDigOffset(0);
    settings->endGroup();
}

void ZephrinMOptions::writeSettings(QSettings *settings)
{
    settings->beginGroup(kGroup);
    m_stored.write(*settings);
    settings->endGroup();
}

void ZephrinMOptions::bindSettings()
{
    m_stored.add("SampleRate", m_ui->cbSampleRate, 1);
    m_stored.add("Lpf", m_ui->chbLpf, true);
    m_stored.add("PreampAuto", m_ui->chbPreamp, true);
    m_stored.add(
        "Serial",
        [this](const QVariant &stored) {
            if (stored.isValid())
                setSerial(QString::fromUtf8(stored.toByteArray()));
        },
        [this] {
            // The one asked for stays so, whatever else is there while it is away.
            return (m_serial.isEmpty() ? m_ui->cbCurrentDevice->currentText() : m_serial).toUtf8();
        });
    bindAgc();
    bindTools();
    bindFilters();
}

void ZephrinMOptions::bindAgc()
{
    struct Keys
    {
        const char *attack;
        const char *decay;
        const char *hangTime;
        double attackDefault; // ms
        int timesDefault;     // ms, of decay and hang
    };
    static constexpr std::array<Keys, 5> kKeys{{
        {"agc_long_Attack", "agc_long_Decay", "agc_long_hangTime", 2.5, 800},
        {"agc_slow_Attack", "agc_slow_Decay", "agc_slow_hangTime", 2.0, 500},
        {"agc_med_Attack", "agc_med_Decay", "agc_med_hangTime", 1.7, 250},
        {"agc_fast_Attack", "agc_fast_Decay", "agc_fast_hangTime", 1.2, 100},
        {"agc_user_Attack", "agc_user_Decay", "agc_user_hangTime", 2.5, 1000},
    }};
    for (std::size_t i = 0; i < kKeys.size(); ++i) {
        m_stored.add(kKeys[i].attack, m_agc[i].attack, kKeys[i].attackDefault);
        m_stored.add(kKeys[i].decay, m_agc[i].decay, kKeys[i].timesDefault);
        m_stored.add(kKeys[i].hangTime, m_agc[i].hangTime, kKeys[i].timesDefault);
    }
}

void ZephrinMOptions::bindTools()
{
    m_stored.add("dsp_nr_taps", m_ui->sbNrTaps, 98);
    m_stored.add("dsp_nr_delay", m_ui->sbNrDelay, 20);
    m_stored.add("dsp_nr_rate", m_ui->dsbNrRate, 0.001);
    m_stored.add("dsp_nr_leak", m_ui->dsbNrLeak, 2e-05);
    m_stored.add("dsp_anf_taps", m_ui->sbAnfTaps, 65);
    m_stored.add("dsp_anf_delay", m_ui->sbAnfDelay, 64);
    m_stored.add("dsp_anf_rate", m_ui->dsbAnfRate, 0.0007);
    m_stored.add("dsp_anf_leak", m_ui->dsbAnfLeak, 1e-05);
    m_stored.add("dsp_nb1_thr", m_ui->dsbNb1Threshold, 2.65);
    m_stored.add("dsp_nb2_thr", m_ui->dsbNb2Threshold, 2.48);
    m_stored.add("dsp_apf_gain", m_ui->sbApfCwGain, 30);
    m_stored.add("dsp_apf_quolity", m_ui->sbApfCwQuality, 5);
    m_stored.add("dsp_apf_ssb_gain", m_ui->sbApfSsbGain, 20);
    m_stored.addTruncated("dsp_apf_ssb_quolity", m_ui->dsbApfSsbQuality, 1.0);
    m_stored.add("dsp_apf_ssb_freq", m_ui->sbApfSsbFreq, 500);
    m_stored.add("dsp_dse_taps", m_ui->sbDseTaps, 200);
    m_stored.add("dsp_dse_swap", m_ui->chbDseSwap, false);
    m_stored.add("dsp_wfm_usa", m_ui->chbWfmUsa, false);
}

void ZephrinMOptions::bindFilters()
{
    m_stored.addWriteOnly("fir_taps_ssb", m_ui->sbFilterTapsSsb);
    m_stored.addWriteOnly("fir_taps_am", m_ui->sbFilterTapsAm);
    m_stored.addWriteOnly("fir_taps_dig", m_ui->sbFilterTapsDig);
    m_stored.addWriteOnly("fir_taps_cw", m_ui->sbFilterTapsCw);
    m_stored.add("dsp_digl_offset", m_ui->sbDiglOffset, 2200);
    m_stored.add("dsp_digu_offset", m_ui->sbDiguOffset, 1500);
    m_stored.add("cw_pitch", m_ui->sbCwPitch, 700);
}
