// SPDX-License-Identifier: GPL-3.0-or-later
// What the default buttons put back. The SSB peak filter and the filter lengths differ on purpose
// from what the page has without a settings file.
#include "Options/ZephrinMOptions.h"
#include "ui_ZephrinMOptions.h"

void ZephrinMOptions::onDefaultNR()
{
    m_ui->sbNrTaps->setValue(98);
    m_ui->sbNrDelay->setValue(20);
    m_ui->dsbNrRate->setValue(0.001);
    m_ui->dsbNrLeak->setValue(2e-05);
}

void ZephrinMOptions::onDefaultANF()
{
    m_ui->sbAnfTaps->setValue(65);
    m_ui->sbAnfDelay->setValue(64);
    m_ui->dsbAnfRate->setValue(0.0007);
    m_ui->dsbAnfLeak->setValue(1e-05);
}

void ZephrinMOptions::onDefaultNB1()
{
    m_ui->dsbNb1Threshold->setValue(2.65);
}

void ZephrinMOptions::onDefaultNB2()
{
    m_ui->dsbNb2Threshold->setValue(2.48);
}

void ZephrinMOptions::onDefaultDSE()
{
    m_ui->sbDseTaps->setValue(200);
}

void ZephrinMOptions::onDefaultAPFCW()
{
    m_ui->sbApfCwGain->setValue(30);
    m_ui->sbApfCwQuality->setValue(5);
}

void ZephrinMOptions::onDefaultAPFSSB()
{
    m_ui->sbApfSsbGain->setValue(20);
    m_ui->dsbApfSsbQuality->setValue(0.8);
    m_ui->sbApfSsbFreq->setValue(550);
}

void ZephrinMOptions::onDefaultFilterTaps()
{
    constexpr int kTaps = 1570;
    m_ui->sbFilterTapsSsb->setValue(kTaps);
    m_ui->sbFilterTapsAm->setValue(kTaps);
    m_ui->sbFilterTapsDig->setValue(kTaps);
    m_ui->sbFilterTapsCw->setValue(kTaps);
}

void ZephrinMOptions::onDefaultDigOffset()
{
    m_ui->sbDiglOffset->setValue(2200);
    m_ui->sbDiguOffset->setValue(1500);
}

void ZephrinMOptions::setAgcTimes(AgcMode mode, double attack, double decay, int hangTime)
{
    setAgcAttack(mode, attack);
    setAgcDecay(mode, decay);
    setAgcHangTime(mode, hangTime);
}

void ZephrinMOptions::onDefaultAgcLong()
{
    setAgcTimes(AgcMode::Long, 2.5, 800.0, 800);
}

void ZephrinMOptions::onDefaultAgcSlow()
{
    setAgcTimes(AgcMode::Slow, 2.0, 500.0, 500);
}

void ZephrinMOptions::onDefaultAgcMed()
{
    setAgcTimes(AgcMode::Med, 1.7, 250.0, 250);
}

void ZephrinMOptions::onDefaultAgcfast()
{
    setAgcTimes(AgcMode::Fast, 1.2, 100.0, 100);
}
