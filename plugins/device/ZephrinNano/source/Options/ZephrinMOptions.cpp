// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options/ZephrinMOptions.h"

#include "Control/DiscoverZephrinNANO.h"
#include "Options/DeviceMenuZephrinNano.h"
#include "Options/OptionControls.h"
#include "Options/combo_boxes.h"
#include "ui_ZephrinMOptions.h"

#include <QEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QSignalBlocker>
#include <QWidgetAction>
#include <algorithm>
#include <cmath>

namespace
{
constexpr float kDecibelsPerStep = 0.5f; // of the preamp slider
constexpr int kHex = 16;

constexpr char kGroup[] = "ZephrinMOptions";
constexpr char kSerialKey[] = "Serial"; // in that group, with those of OptionControls
} // namespace

ZephrinMOptions::ZephrinMOptions(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::ZephrinMOptions>())
{
    m_ui->setupUi(this);
    m_texts.emplace(*m_ui->lbConnectStatus, *m_ui->cbSampleRate);
    m_controls = std::make_unique<OptionControls>(*this, *m_ui);
    stopWheel();
    createDeviceMenu();
    connectDevice();
    connectDeviceMenu();
    connectButtons();
    setLock(false);
    // A scan may have ended before there was a page. One that goes on is not waited for: it tells.
    if (!DiscoverZephrinNANO::instance()->isScanning())
        onDiscovered();
}

ZephrinMOptions::~ZephrinMOptions() = default;

void ZephrinMOptions::readSettings(QSettings *settings)
{
    settings->beginGroup(kGroup);
    if (const QVariant serial = settings->value(kSerialKey); serial.isValid())
        setSerial(QString::fromUtf8(serial.toByteArray()));
    m_controls->read(*settings);
    // Once in any case: the host has no other source of the offsets.
    onDigOffset(0);
    settings->endGroup();
}

void ZephrinMOptions::writeSettings(QSettings *settings)
{
    settings->beginGroup(kGroup);
    // The one asked for stays so, whatever else is there while it is away.
    const QString serial = m_serial.isEmpty() ? m_ui->cbCurrentDevice->currentText() : m_serial;
    settings->setValue(kSerialKey, serial.toUtf8());
    m_controls->write(*settings);
    settings->endGroup();
}

void ZephrinMOptions::createDeviceMenu()
{
    m_menu = new QMenu(this);
    m_panel = new DeviceMenuZephrinNano;
    auto *action = new QWidgetAction(m_menu);
    action->setDefaultWidget(m_panel);
    m_menu->addAction(action);
}

void ZephrinMOptions::connectDevice()
{
    const auto indexChanged = qOverload<int>(&QComboBox::currentIndexChanged);
    connect(m_ui->cbCurrentDevice, indexChanged, this, &ZephrinMOptions::chooseDevice);
    connect(m_ui->hsPreamp, &QSlider::valueChanged, this, &ZephrinMOptions::onPreamp);
    for (const QSpinBox *offset : {m_ui->sbDiglOffset, m_ui->sbDiguOffset})
        connect(
            offset, qOverload<int>(&QSpinBox::valueChanged), this, &ZephrinMOptions::onDigOffset);
    // From the thread of the scan, thus queued.
    connect(DiscoverZephrinNANO::instance(), &DiscoverZephrinNANO::discovered, this,
        &ZephrinMOptions::onDiscovered);
}

/// Page and menu follow each other.
void ZephrinMOptions::connectDeviceMenu()
{
    connect(this, &ZephrinMOptions::sampleRateChanged, m_panel,
        [this](int index) { m_panel->setSampleRate(HardwareZephrinNANO::SampleRate(index)); });
    connect(
        this, &ZephrinMOptions::preampAutoChanged, m_panel, &DeviceMenuZephrinNano::setAutoPreamp);
    connect(m_panel, &DeviceMenuZephrinNano::deviceChanged, m_ui->cbCurrentDevice,
        &QComboBox::setCurrentIndex);
    connect(m_panel, &DeviceMenuZephrinNano::sampleRateChanged, this,
        &ZephrinMOptions::setSampleRateIndex);
    connect(m_panel, &DeviceMenuZephrinNano::autoPreampChanged, m_ui->chbPreamp,
        &QCheckBox::setChecked);
}

void ZephrinMOptions::connectButtons()
{
    using Self = ZephrinMOptions;
    const auto clicked = &QPushButton::clicked;
    connect(m_ui->btnReadCalibrations, clicked, this, &Self::readArminCalibrations);
    connect(m_ui->btnWriteCalibrations, clicked, this, &Self::askToWrite);
    connect(m_ui->btnAdcRegWrite, clicked, this, &Self::onAdcRegWrite);
    connect(m_ui->btnAttWrite, clicked, this, &Self::onAttWrite);
}

int ZephrinMOptions::sampleRateIndex() const
{
    return m_ui->cbSampleRate->currentIndex();
}

void ZephrinMOptions::setSampleRateIndex(int index)
{
    if (index >= 0 && index < m_ui->cbSampleRate->count())
        m_ui->cbSampleRate->setCurrentIndex(index);
}

int ZephrinMOptions::getCurrentDeviceID() const
{
    const QComboBox &box = *m_ui->cbCurrentDevice;
    return box.currentIndex() < 0 ? -1 : box.currentData().toInt();
}

void ZephrinMOptions::chooseDevice(int index)
{
    if (index < 0)
        return;
    m_serial = m_ui->cbCurrentDevice->itemText(index);
    m_panel->setCurrentDevice(index);
    m_panel->setSerial(m_serial);
}

void ZephrinMOptions::setSerial(QStringView serial)
{
    m_serial = serial.toString();
    m_panel->setSerial(serial);
    restoreDevice(m_serial);
}

void ZephrinMOptions::restoreDevice(const QString &serial)
{
    if (serial.isEmpty())
        return;
    if (const int index = m_ui->cbCurrentDevice->findText(serial); index >= 0)
        m_ui->cbCurrentDevice->setCurrentIndex(index);
}

void ZephrinMOptions::onDiscovered()
{
    const auto devices = DiscoverZephrinNANO::instance()->devices();
    {
        // What a scan makes of the choice is no wish of the user: the device asked for may come
        // back.
        const QSignalBlocker quiet(m_ui->cbCurrentDevice);
        const QSignalBlocker quietPanel(m_panel);
        fillDevices(*m_ui->cbCurrentDevice, devices);
        restoreDevice(m_serial);
        m_panel->setDevices(devices);
        m_panel->setCurrentDevice(m_ui->cbCurrentDevice->currentIndex());
    }
    m_ui->lbNoDevice->setVisible(devices.empty());
    if (!devices.empty())
        m_panel->setSerial(m_ui->cbCurrentDevice->currentText());
}

void ZephrinMOptions::setLock(bool lock)
{
    m_ui->cbCurrentDevice->setDisabled(lock);
    m_panel->setLock(lock);
    for (QPushButton *button : {m_ui->btnReadCalibrations, m_ui->btnWriteCalibrations,
             m_ui->btnAdcRegWrite, m_ui->btnAttWrite})
        button->setEnabled(lock); // what they do is done to an open device
    if (!lock && m_question)
        m_question->reject(); // it was about one that is closed
}

void ZephrinMOptions::setStatus(const QString &status)
{
    m_texts->setStatus(status);
    m_panel->setStatus(status);
}

void ZephrinMOptions::on4k(bool)
{
    m_texts->widenRates();
    m_panel->switchDpi();
}

void ZephrinMOptions::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    m_ui->retranslateUi(this);
    m_texts->restore();
    showPreamp();
}

/// What the receiver holds cannot be had back. The box does not stop anything: who uses the page
/// goes on meanwhile.
void ZephrinMOptions::askToWrite()
{
    m_question = new QMessageBox(QMessageBox::Question, tr("Write the calibration"),
        tr("Write the calibration into the receiver? What its memory holds now is replaced."),
        QMessageBox::Cancel, this);
    m_question->setAttribute(Qt::WA_DeleteOnClose);
    const QPushButton *const write = m_question->addButton(tr("&Write"), QMessageBox::AcceptRole);
    m_question->setDefaultButton(QMessageBox::Cancel);
    connect(write, &QPushButton::clicked, this, &ZephrinMOptions::writeArminCalibrations);
    m_question->open();
}

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

double ZephrinMOptions::agcAttack(AgcMode mode) const
{
    return m_controls->agcTime(mode, &ZephrinMOptions::agcAttackChanged);
}

double ZephrinMOptions::agcDecay(AgcMode mode) const
{
    return m_controls->agcTime(mode, &ZephrinMOptions::agcDecayChanged);
}

int ZephrinMOptions::agcHangTime(AgcMode mode) const
{
    return int(m_controls->agcTime(mode, &ZephrinMOptions::agcHangTimeChanged));
}

void ZephrinMOptions::setAgcAttack(AgcMode mode, double ms)
{
    m_controls->setAgcTime(mode, &ZephrinMOptions::agcAttackChanged, ms);
}

void ZephrinMOptions::setAgcDecay(AgcMode mode, double ms)
{
    m_controls->setAgcTime(mode, &ZephrinMOptions::agcDecayChanged, ms);
}

void ZephrinMOptions::setAgcHangTime(AgcMode mode, int ms)
{
    m_controls->setAgcTime(mode, &ZephrinMOptions::agcHangTimeChanged, ms);
}

void ZephrinMOptions::onAgcAttack(double ms)
{
    if (const auto mode = m_controls->agcMode(sender()))
        emit agcAttackChanged(*mode, ms);
}

void ZephrinMOptions::onAgcDecay(double ms)
{
    if (const auto mode = m_controls->agcMode(sender()))
        emit agcDecayChanged(*mode, ms);
}

void ZephrinMOptions::onAgcHangTime(int ms)
{
    if (const auto mode = m_controls->agcMode(sender()))
        emit agcHangTimeChanged(*mode, ms);
}

void ZephrinMOptions::onDefaultNR()
{
    m_controls->putBack(m_ui->btnDefaultNr);
}

void ZephrinMOptions::onDefaultANF()
{
    m_controls->putBack(m_ui->btnDefaultAnf);
}

void ZephrinMOptions::onDefaultNB1()
{
    m_controls->putBack(m_ui->btnDefaultNb1);
}

void ZephrinMOptions::onDefaultNB2()
{
    m_controls->putBack(m_ui->btnDefaultNb2);
}

void ZephrinMOptions::onDefaultDSE()
{
    m_controls->putBack(m_ui->btnDefaultDse);
}

void ZephrinMOptions::onDefaultAPFCW()
{
    m_controls->putBack(m_ui->btnDefaultApfCw);
}

void ZephrinMOptions::onDefaultAPFSSB()
{
    m_controls->putBack(m_ui->btnDefaultApfSsb);
}

void ZephrinMOptions::onDefaultFilterTaps()
{
    m_controls->putBack(m_ui->btnDefaultFilterTaps);
}

void ZephrinMOptions::onDefaultDigOffset()
{
    m_controls->putBack(m_ui->btnDefaultDigOffset);
}

void ZephrinMOptions::onDefaultAgcLong()
{
    m_controls->putBack(m_ui->btnDefaultAgcLong);
}

void ZephrinMOptions::onDefaultAgcSlow()
{
    m_controls->putBack(m_ui->btnDefaultAgcSlow);
}

void ZephrinMOptions::onDefaultAgcMed()
{
    m_controls->putBack(m_ui->btnDefaultAgcMed);
}

void ZephrinMOptions::onDefaultAgcfast()
{
    m_controls->putBack(m_ui->btnDefaultAgcFast);
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
