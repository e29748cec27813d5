// SPDX-License-Identifier: GPL-3.0-or-later
// Device, sample rate, automatic preamp and status, which page and device menu share.
#include "Control/DiscoverZephrinNANO.h"
#include "Options/DeviceMenuZephrinNano.h"
#include "Options/ZephrinMOptions.h"
#include "Options/combo_boxes.h"
#include "ui_ZephrinMOptions.h"

#include <QMenu>
#include <QSignalBlocker>
#include <QWidgetAction>

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
    connect(m_ui->cbSampleRate, indexChanged, this, [this](int index) {
        m_panel->setSampleRate(HardwareZephrinNANO::SampleRate(index));
        emit sampleRateChanged(index);
    });
    connect(m_ui->chbLpf, &QCheckBox::toggled, this, &ZephrinMOptions::onLpf);
    connect(m_ui->chbPreamp, &QCheckBox::toggled, this, [this](bool state) {
        m_panel->setAutoPreamp(state);
        emit preampAutoChanged(state);
    });
    connect(m_ui->hsPreamp, &QSlider::valueChanged, this, &ZephrinMOptions::onPreamp);
    // From the thread of the scan, thus queued.
    connect(DiscoverZephrinNANO::instance(), &DiscoverZephrinNANO::discovered, this,
        &ZephrinMOptions::onDiscovered);
}

void ZephrinMOptions::followDeviceMenu()
{
    connect(m_panel, &DeviceMenuZephrinNano::deviceChanged, m_ui->cbCurrentDevice,
        &QComboBox::setCurrentIndex);
    connect(m_panel, &DeviceMenuZephrinNano::sampleRateChanged, this,
        &ZephrinMOptions::setSampleRateIndex);
    connect(m_panel, &DeviceMenuZephrinNano::autoPreampChanged, m_ui->chbPreamp,
        &QCheckBox::setChecked);
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
    if (!devices.empty())
        m_panel->setSerial(m_ui->cbCurrentDevice->currentText());
}

void ZephrinMOptions::setLock(bool lock)
{
    m_ui->cbCurrentDevice->setDisabled(lock);
    m_panel->setLock(lock);
}

void ZephrinMOptions::setStatus(const QString &status)
{
    m_ui->lbConnectStatus->setText(status);
    m_panel->setStatus(status);
}

void ZephrinMOptions::on4k(bool)
{
    widenItems(*m_ui->cbSampleRate);
    m_panel->switchDpi();
}
