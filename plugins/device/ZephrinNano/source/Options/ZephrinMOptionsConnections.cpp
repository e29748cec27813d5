// SPDX-License-Identifier: GPL-3.0-or-later
// Which control raises which signal.
#include "Options/ZephrinMOptions.h"
#include "ui_ZephrinMOptions.h"

void ZephrinMOptions::relay(QSpinBox *box, IntSignal signal)
{
    connect(box, qOverload<int>(&QSpinBox::valueChanged), this, signal);
}

void ZephrinMOptions::relay(QDoubleSpinBox *box, DoubleSignal signal)
{
    connect(box, qOverload<double>(&QDoubleSpinBox::valueChanged), this, signal);
}

void ZephrinMOptions::relay(QCheckBox *box, BoolSignal signal)
{
    connect(box, &QCheckBox::toggled, this, signal);
}

void ZephrinMOptions::connectCalibration()
{
    using Self = ZephrinMOptions;
    relay(m_ui->dsbUserPreampCoeff, &Self::userPreampCoeffChanged);
    relay(m_ui->dsbUserFreqCoeff, &Self::userPreampFreqChanged);
    relay(m_ui->dsbAdminPreampCoeff, &Self::adminPreampCoeffChanged);
    relay(m_ui->dsbAdminFreqCoeff, &Self::adminPreampFreqChanged);
    relay(m_ui->chbAdcReset, &Self::adcResetChanged);

    const auto clicked = &QPushButton::clicked;
    connect(m_ui->btnReadCalibrations, clicked, this, &Self::readArminCalibrations);
    connect(m_ui->btnWriteCalibrations, clicked, this, &Self::writeArminCalibrations);
    connect(m_ui->btnAdcRegWrite, clicked, this, &Self::onAdcRegWrite);
    connect(m_ui->btnAttWrite, clicked, this, &Self::onAttWrite);
}

void ZephrinMOptions::connectAgc()
{
    using Self = ZephrinMOptions;
    for (const AgcRow &row : m_agc) {
        const auto doubleChanged = qOverload<double>(&QDoubleSpinBox::valueChanged);
        connect(row.attack, doubleChanged, this, &Self::onAgcAttack);
        connect(row.decay, doubleChanged, this, &Self::onAgcDecay);
        connect(row.hangTime, qOverload<int>(&QSpinBox::valueChanged), this, &Self::onAgcHangTime);
    }
}

void ZephrinMOptions::connectTools()
{
    using Self = ZephrinMOptions;
    relay(m_ui->sbNrTaps, &Self::nrTapsChanged);
    relay(m_ui->sbNrDelay, &Self::nrDelayChanged);
    relay(m_ui->dsbNrRate, &Self::nrRateChanged);
    relay(m_ui->dsbNrLeak, &Self::nrLeakChanged);
    relay(m_ui->sbAnfTaps, &Self::anfTapsChanged);
    relay(m_ui->sbAnfDelay, &Self::anfDelayChanged);
    relay(m_ui->dsbAnfRate, &Self::anfRateChanged);
    relay(m_ui->dsbAnfLeak, &Self::anfLeakChanged);
    relay(m_ui->dsbNb1Threshold, &Self::nb1ThresholdChanged);
    relay(m_ui->dsbNb2Threshold, &Self::nb2ThresholdChanged);
    relay(m_ui->sbApfCwGain, &Self::apfCwGainChanged);
    relay(m_ui->sbApfCwQuality, &Self::apfCwQualityChanged);
    relay(m_ui->sbApfSsbGain, &Self::apfSsbGainChanged);
    relay(m_ui->dsbApfSsbQuality, &Self::apfSsbQualityChanged);
    relay(m_ui->sbApfSsbFreq, &Self::apfSsbFreqChanged);
    relay(m_ui->sbDseTaps, &Self::dseQualityChanged);
    relay(m_ui->chbDseSwap, &Self::dseSwapChanged);
    relay(m_ui->chbWfmUsa, &Self::wfmUsaChanged);
    relay(m_ui->sbFilterTapsSsb, &Self::filterTapsSsbChanged);
    relay(m_ui->sbFilterTapsAm, &Self::filterTapsAmChanged);
    relay(m_ui->sbFilterTapsDig, &Self::filterTapsDigChanged);
    relay(m_ui->sbFilterTapsCw, &Self::filterTapsCwChanged);
    relay(m_ui->sbDiglOffset, &Self::diglOffsetChanged);
    relay(m_ui->sbDiglOffset, &Self::onDigOffset);
    relay(m_ui->sbDiguOffset, &Self::diguOffsetChanged);
    relay(m_ui->sbDiguOffset, &Self::onDigOffset);
    relay(m_ui->sbCwPitch, &Self::cwPitchChanged);
}

void ZephrinMOptions::connectDefaultButtons()
{
    using Self = ZephrinMOptions;
    const auto clicked = &QPushButton::clicked;
    connect(m_ui->btnDefaultNr, clicked, this, &Self::onDefaultNR);
    connect(m_ui->btnDefaultAnf, clicked, this, &Self::onDefaultANF);
    connect(m_ui->btnDefaultNb1, clicked, this, &Self::onDefaultNB1);
    connect(m_ui->btnDefaultNb2, clicked, this, &Self::onDefaultNB2);
    connect(m_ui->btnDefaultDse, clicked, this, &Self::onDefaultDSE);
    connect(m_ui->btnDefaultApfCw, clicked, this, &Self::onDefaultAPFCW);
    connect(m_ui->btnDefaultApfSsb, clicked, this, &Self::onDefaultAPFSSB);
    connect(m_ui->btnDefaultFilterTaps, clicked, this, &Self::onDefaultFilterTaps);
    connect(m_ui->btnDefaultDigOffset, clicked, this, &Self::onDefaultDigOffset);
    connect(m_ui->btnDefaultAgcLong, clicked, this, &Self::onDefaultAgcLong);
    connect(m_ui->btnDefaultAgcSlow, clicked, this, &Self::onDefaultAgcSlow);
    connect(m_ui->btnDefaultAgcMed, clicked, this, &Self::onDefaultAgcMed);
    connect(m_ui->btnDefaultAgcFast, clicked, this, &Self::onDefaultAgcfast);
}
