// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options/DeviceMenuZephrinNano.h"

#include "Options/combo_boxes.h"
#include "ui_DeviceMenuZephrinNano.h"

#include <QKeyEvent>
#include <array>
#include <iterator>

DeviceMenuZephrinNano::DeviceMenuZephrinNano(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::DeviceMenuZephrinNano>())
{
    m_ui->setupUi(this);
    m_texts.emplace(*m_ui->lbConnectStatus, *m_ui->cbSampleRate);
    setFocusPolicy(Qt::TabFocus); // else the menu skips the panel
    m_ui->chbPreamp->installEventFilter(this);
    for (QComboBox *box : {m_ui->cbCurrentDevice, m_ui->cbSampleRate}) {
        box->installEventFilter(this);
        box->setFocusPolicy(Qt::StrongFocus); // no focus by the wheel either
    }
    const auto indexChanged = qOverload<int>(&QComboBox::currentIndexChanged);
    connect(m_ui->cbCurrentDevice, indexChanged, this, &DeviceMenuZephrinNano::deviceChanged);
    connect(m_ui->cbSampleRate, indexChanged, this, [this](int index) {
        if (index >= 0)
            setSampleRate(HardwareZephrinNANO::SampleRate(index));
    });
    connect(m_ui->chbPreamp, &QCheckBox::toggled, this, &DeviceMenuZephrinNano::setAutoPreamp);
}

DeviceMenuZephrinNano::~DeviceMenuZephrinNano() = default;

void DeviceMenuZephrinNano::setAutoPreamp(bool state)
{
    if (m_autoPreamp == state)
        return;
    m_autoPreamp = state;
    m_ui->chbPreamp->setChecked(state);
    emit autoPreampChanged(state);
}

void DeviceMenuZephrinNano::setSampleRate(HardwareZephrinNANO::SampleRate rate)
{
    if (m_sampleRate == rate)
        return;
    m_sampleRate = rate;
    m_ui->cbSampleRate->setCurrentIndex(rate);
    emit sampleRateChanged(rate);
}

void DeviceMenuZephrinNano::setSerial(QStringView serial)
{
    if (serial == m_serial)
        return;
    m_serial = serial.toString();
    emit serialChanged(m_serial);
}

void DeviceMenuZephrinNano::setStatus(QStringView status)
{
    m_texts->setStatus(
        "<html><head/><body><p align=\"left\">" + status.toString() + "</p></body></html>");
}

void DeviceMenuZephrinNano::setDevices(std::list<DiscoverZephrinNANO::DevId> devices)
{
    if (devices != m_devices)
        m_devices = std::move(devices);
    fillDevices(*m_ui->cbCurrentDevice, m_devices);
    m_ui->lbNoDevice->setVisible(m_devices.empty());
}

int DeviceMenuZephrinNano::deviceId(int index) const
{
    if (index < 0 || std::size_t(index) >= m_devices.size())
        return -1;
    return std::next(m_devices.begin(), index)->index;
}

void DeviceMenuZephrinNano::setCurrentDevice(int index)
{
    m_ui->cbCurrentDevice->setCurrentIndex(index);
}

void DeviceMenuZephrinNano::setLock(bool lock)
{
    m_ui->cbCurrentDevice->setDisabled(lock);
}

void DeviceMenuZephrinNano::switchDpi()
{
    m_texts->widenRates();
}

void DeviceMenuZephrinNano::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    m_ui->retranslateUi(this);
    m_texts->restore();
}

bool DeviceMenuZephrinNano::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Wheel) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::KeyPress) {
        const auto &press = static_cast<const QKeyEvent &>(*event);
        const bool down = press.key() == Qt::Key_Down;
        if (press.modifiers() == Qt::NoModifier && (down || press.key() == Qt::Key_Up))
            return focusNextPrevChild(down);
    }
    return QWidget::eventFilter(watched, event);
}

bool DeviceMenuZephrinNano::focusNextPrevChild(bool next)
{
    const std::array<QWidget *, 3> controls{
        m_ui->cbCurrentDevice, m_ui->cbSampleRate, m_ui->chbPreamp};
    const int count = int(controls.size());
    int at = next ? -1 : count; // before the first or after the last, if none has the focus
    for (int i = 0; i < count; ++i)
        if (controls[std::size_t(i)]->hasFocus())
            at = i;
    for (int step = 0; step < count; ++step) {
        at = (at + (next ? 1 : count - 1)) % count;
        if (controls[std::size_t(at)]->isEnabled()) {
            controls[std::size_t(at)]->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            break;
        }
    }
    return true;
}

void DeviceMenuZephrinNano::focusInEvent(QFocusEvent *event)
{
    focusNextPrevChild(event->reason() != Qt::BacktabFocusReason);
}
