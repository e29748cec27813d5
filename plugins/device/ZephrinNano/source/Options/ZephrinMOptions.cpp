// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options/ZephrinMOptions.h"

#include "Control/DiscoverZephrinNANO.h"
#include "ui_ZephrinMOptions.h"

#include <QEvent>
#include <QMessageBox>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

namespace
{
constexpr float kDecibelsPerStep = 0.5f; // of the preamp slider
constexpr int kHex = 16;
} // namespace

ZephrinMOptions::ZephrinMOptions(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::ZephrinMOptions>())
{
    m_ui->setupUi(this);
    m_agc = {{
        {m_ui->dsbAgcLongAttack, m_ui->dsbAgcLongDecay, m_ui->sbAgcLongHangTime},
        {m_ui->dsbAgcSlowAttack, m_ui->dsbAgcSlowDecay, m_ui->sbAgcSlowHangTime},
        {m_ui->dsbAgcMedAttack, m_ui->dsbAgcMedDecay, m_ui->sbAgcMedHangTime},
        {m_ui->dsbAgcFastAttack, m_ui->dsbAgcFastDecay, m_ui->sbAgcFastHangTime},
        {m_ui->dsbAgcUserAttack, m_ui->dsbAgcUserDecay, m_ui->sbAgcUserHangTime},
    }};
    stopWheel();
    bindSettings();
    createDeviceMenu();
    connectDevice();
    followDeviceMenu();
    connectCalibration();
    connectAgc();
    connectTools();
    connectDefaultButtons();
    // A scan may have ended before there was a page. One that goes on is not waited for: it tells.
    if (!DiscoverZephrinNANO::instance()->isScanning())
        onDiscovered();
}

ZephrinMOptions::~ZephrinMOptions() = default;

bool ZephrinMOptions::bypass() const
{
    return !m_ui->chbLpf->isChecked();
}

void ZephrinMOptions::setBypass(bool bypass)
{
    m_ui->chbLpf->setChecked(!bypass);
}

void ZephrinMOptions::onLpf(bool on)
{
    emit bypassChanged(!on);
}

bool ZephrinMOptions::preampAuto() const
{
    return m_ui->chbPreamp->isChecked();
}

int ZephrinMOptions::attValue() const
{
    return m_ui->hsPreamp->value();
}

void ZephrinMOptions::setAttValue(int halfDecibels)
{
    m_ui->hsPreamp->setValue(halfDecibels);
}

void ZephrinMOptions::setPreampValue(float decibels)
{
    if (std::isnan(decibels))
        return;
    const auto minimum = float(m_ui->hsPreamp->minimum());
    const auto maximum = float(m_ui->hsPreamp->maximum());
    setAttValue(int(std::lround(std::clamp(decibels / kDecibelsPerStep, minimum, maximum))));
}

void ZephrinMOptions::onPreamp(int halfDecibels)
{
    showPreamp();
    emit preampChanged(float(halfDecibels) * kDecibelsPerStep);
}

void ZephrinMOptions::showPreamp()
{
    const double decibels = double(float(attValue()) * kDecibelsPerStep);
    m_ui->lbPreamp->setText(tr("Preamp: ") + QString("%1").arg(decibels, 0, 'f', 1) + tr(" dBm"));
}

void ZephrinMOptions::onUpdate()
{
    // AM first: its length acts in any mode, and the mode's own takes its place.
    emit filterTapsAmChanged(m_ui->sbFilterTapsAm->value());
    emit filterTapsSsbChanged(m_ui->sbFilterTapsSsb->value());
    emit filterTapsDigChanged(m_ui->sbFilterTapsDig->value());
    emit filterTapsCwChanged(m_ui->sbFilterTapsCw->value());
    showPreamp();
}

int ZephrinMOptions::cwPitch() const
{
    return m_ui->sbCwPitch->value();
}

void ZephrinMOptions::onDigOffset(int)
{
    emit digOffsetChanged(-m_ui->sbDiglOffset->value(), m_ui->sbDiguOffset->value());
}

const ZephrinMOptions::AgcRow *ZephrinMOptions::agcRow(AgcMode mode) const
{
    if (mode < AgcMode::Long || mode > AgcMode::User)
        return nullptr;
    return &m_agc[std::size_t(mode) - std::size_t(AgcMode::Long)];
}

double ZephrinMOptions::agcAttack(AgcMode mode) const
{
    const AgcRow *row = agcRow(mode);
    return row ? row->attack->value() : 0.0;
}

double ZephrinMOptions::agcDecay(AgcMode mode) const
{
    const AgcRow *row = agcRow(mode);
    return row ? row->decay->value() : 0.0;
}

int ZephrinMOptions::agcHangTime(AgcMode mode) const
{
    const AgcRow *row = agcRow(mode);
    return row ? row->hangTime->value() : 0;
}

void ZephrinMOptions::setAgcAttack(AgcMode mode, double ms)
{
    if (const AgcRow *row = agcRow(mode))
        row->attack->setValue(ms);
}

void ZephrinMOptions::setAgcDecay(AgcMode mode, double ms)
{
    if (const AgcRow *row = agcRow(mode))
        row->decay->setValue(ms);
}

void ZephrinMOptions::setAgcHangTime(AgcMode mode, int ms)
{
    if (const AgcRow *row = agcRow(mode))
        row->hangTime->setValue(ms);
}

void ZephrinMOptions::onAgcAttack(double ms)
{
    tellAgcTime(&ZephrinMOptions::agcAttackChanged, ms);
}

void ZephrinMOptions::onAgcDecay(double ms)
{
    tellAgcTime(&ZephrinMOptions::agcDecayChanged, ms);
}

void ZephrinMOptions::onAgcHangTime(int ms)
{
    tellAgcTime(&ZephrinMOptions::agcHangTimeChanged, ms);
}

void ZephrinMOptions::tellAgcTime(AgcSignal signal, double ms)
{
    const QObject *box = sender();
    for (std::size_t i = 0; i < m_agc.size(); ++i) {
        const AgcRow &row = m_agc[i];
        if (box == row.attack || box == row.decay || box == row.hangTime)
            emit(this->*signal)(AgcMode(std::size_t(AgcMode::Long) + i), ms);
    }
}

void ZephrinMOptions::setUserPreampCoeff(double value)
{
    showCoefficient(m_ui->dsbUserPreampCoeff, value);
}

void ZephrinMOptions::setUserFreqCoeff(double value)
{
    showCoefficient(m_ui->dsbUserFreqCoeff, value);
}

void ZephrinMOptions::setAdminPreampCoeff(double value)
{
    showCoefficient(m_ui->dsbAdminPreampCoeff, value);
}

void ZephrinMOptions::setAdminFreqCoeff(double value)
{
    showCoefficient(m_ui->dsbAdminFreqCoeff, value);
}

void ZephrinMOptions::showCoefficient(QDoubleSpinBox *box, double value)
{
    if (std::isnan(value))
        return;
    const double limited = std::clamp(value, box->minimum(), box->maximum());
    const double shown = QString::number(limited, 'f', box->decimals()).toDouble();
    QSignalBlocker quiet(box);
    if (qFuzzyCompare(shown, value))
        quiet.unblock();
    box->setValue(shown);
}

void ZephrinMOptions::onAdcRegWrite()
{
    bool dataOk = false;
    bool registerOk = false;
    const uint data = m_ui->leAdcData->text().toLower().toUShort(&dataOk, kHex);
    const uint number = m_ui->leAdcRegister->text().toLower().toUShort(&registerOk, kHex);
    if (!dataOk || !registerOk) {
        QMessageBox::warning(this, "VelmoraSDR2", tr("Incorrect HEX value for ADC REG!"));
        return;
    }
    emit adcRegChanged(quint16(number << 8 | data));
}

void ZephrinMOptions::onAttWrite()
{
    emit attValueChanged(m_ui->leAttenuator->text().toLower().toInt(nullptr, kHex));
}

void ZephrinMOptions::stopWheel()
{
    const auto guard = [this](QWidget *box) {
        box->installEventFilter(this);
        box->setFocusPolicy(Qt::StrongFocus); // no focus by the wheel either
    };
    for (QAbstractSpinBox *box : findChildren<QAbstractSpinBox *>())
        guard(box);
    for (QComboBox *box : findChildren<QComboBox *>())
        guard(box);
}

bool ZephrinMOptions::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Wheel)
        return QWidget::eventFilter(watched, event);
    event->ignore();
    return true;
}
