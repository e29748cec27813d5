// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/ControlM.h"

#include "Control/CalibrationControl.h"
#include "Control/DiscoverZephrinNANO.h"
#include "Control/driver/crc32.h"
#include "Control/qWait.h"
#include "host_interfaces/EngineLimits.h"
#include "host_interfaces/Repairs.h"
#include "vm_library/source/log/Log.h"

#include <QPointer>
#include <QSignalBlocker>
#include <algorithm>
#include <cstddef>

namespace
{
constexpr int kScanMs = 2000;

// The stream settles before the gain is sent once more.
constexpr int kPostInitMs = 100;

// Between the end of a stream and the start of the next.
constexpr std::chrono::milliseconds kRestartPause(100);

enum ConnectStatus { Disconnected = 0, Connected = 2 };

using Calibrations = HardwareZephrinNANO::Calibrations;

unsigned checksum(Calibrations &page)
{
    return crc32(reinterpret_cast<unsigned char *>(&page), offsetof(Calibrations, checksum));
}
} // namespace

ControlM::ControlM(std::shared_ptr<ZephrinMDSP> dsp, QObject *parent)
    : QObject(parent), m_dsp(std::move(dsp)), m_calibration(std::make_shared<CalibrationControl>())
{
    m_driver = std::make_unique<HardwareZephrinNANO>(m_dsp, nullptr);
    // Connected before the scan, whose end would otherwise be missed if it is quick.
    auto *discover = DiscoverZephrinNANO::instance();
    connect(discover, &DiscoverZephrinNANO::discovered, this, &ControlM::onDoscovered);
    discover->scan();

    connect(m_driver.get(), &HardwareZephrinNANO::forceStop, this, &ControlM::stoped);
    connect(m_calibration.get(), &CalibrationControl::streamPreampCoeffChanged, m_driver.get(),
        &HardwareZephrinNANO::setPreampCoeff);
    connect(
        m_calibration.get(), &CalibrationControl::userFreqChanged, this, &ControlM::onFreqCoeff);
    connect(
        m_calibration.get(), &CalibrationControl::adminFreqChanged, this, &ControlM::onFreqCoeff);
    connect(&m_scanTimer, &QTimer::timeout, this, &ControlM::onScannDevices);
    m_scanTimer.start(kScanMs);
}

ControlM::~ControlM() = default;

void ControlM::setRepairs(const Repairs &repairs)
{
    m_driver->setRepairs(repairs);
    m_calibration->setFiniteOnly(repairs.has(Repair::Numbers));
}

bool ControlM::open(int id)
{
    if (m_driver->isOpen())
        return true;
    if (id < 0 || !m_driver->open(id))
        return false;

    setReadCalibrations();
    tune();
    onFreqCoeff(0); // and once more with the factors as they stand, whoever set them
    emit openChanged(true);
    return true;
}

void ControlM::close()
{
    m_restart = false;
    if (!m_driver->isOpen())
        return;
    stopStream();
    m_driver->close();
    emit openChanged(false);
}

bool ControlM::start()
{
    if (m_driver->isStartStream())
        return true;
    m_driver->startStream(toSr(m_sampleRate));
    m_driver->setPreamp(m_preamp);
    QTimer::singleShot(kPostInitMs, this, SLOT(postInit()));
    return true;
}

void ControlM::postInit()
{
    m_driver->setPreamp(m_preamp);
    {
        const QSignalBlocker once(m_calibration.get()); // changed or not, one signal follows
        m_calibration->setPreamp(m_preamp);
    }
    m_calibration->update();
}

void ControlM::stop()
{
    m_restart = false;
    stopStream();
}

void ControlM::stopStream()
{
    if (!m_driver->isStartStream())
        return;
    m_driver->stopStream();
    emit streamStopped();
}

void ControlM::setFreq(double f)
{
    if (qFuzzyCompare(f, m_freq))
        return;
    m_freq = f;
    tune();
}

void ControlM::onFreqCoeff(double)
{
    m_freqCoeff = m_calibration->userFreqCoeff() * m_calibration->adminFreqCoeff();
    tune();
}

void ControlM::tune()
{
    m_driver->setFrequency(m_freq * m_freqCoeff);
}

void ControlM::setSampleRate(int rate)
{
    if (rate == m_sampleRate)
        return;
    m_sampleRate = rate;
    if (!m_driver->isStartStream())
        return;
    stopStream();
    m_restart = true;
    const QPointer<ControlM> self(this);
    Qt::qWait(kRestartPause);
    if (self && m_restart)
        start();
}

ZephrinSR ControlM::toSr(int rate)
{
    constexpr auto &kRates = EngineLimits::kRatesHz;
    const auto *const row = std::find(kRates.begin(), kRates.end(), rate);
    return row == kRates.end() ? ZephrinSR::Rate48000 : ZephrinSR(row - kRates.begin());
}

bool ControlM::avalibleDevices() const
{
    return !DiscoverZephrinNANO::instance()->devices().empty();
}

void ControlM::setBypass(bool, bool) { }

void ControlM::setBypass(bool) { }

void ControlM::setAdcReg(ushort) { }

void ControlM::setAdcReset(bool) { }

void ControlM::setPreamp(float value)
{
    m_preamp = value;
    m_driver->setPreamp(value);
    m_calibration->setPreamp(value);
}

void ControlM::setUserPreampCoeff(double value)
{
    m_calibration->setUserPreampCoeff(value);
}

void ControlM::setUserFreqCoeff(double value)
{
    m_calibration->setUserFreqCoeff(value);
}

void ControlM::setAdminPreampCoeff(double value)
{
    m_calibration->setAdminPreampCoeff(value);
}

void ControlM::setAdminFreqCoeff(double value)
{
    m_calibration->setAdminFreqCoeff(value);
}

void ControlM::setReadCalibrations()
{
    // A read that fails leaves the page as made here, whose checksum is not that of its values.
    Calibrations page;
    m_driver->read(page);
    if (checksum(page) != page.checksum) {
        vm::log::warning("void ControlM::setReadCalibrations()", ": Incorrect CRC");
        return;
    }
    m_calibration->setAdminFreqCoeff(page.adminFreqCoeff);
    m_calibration->setAdminPreampCoeff(page.adminPreampCoeff);
    m_calibration->setUserFreqCoeff(page.userFreqCoeff);
    m_calibration->setUserPreampCoeff(page.userPreampCoeff);
}

void ControlM::setWriteCalibrations()
{
    Calibrations page{m_calibration->userPreampCoeff(), m_calibration->userFreqCoeff(),
        m_calibration->adminPreampCoeff(), m_calibration->adminFreqCoeff()};
    page.checksum = checksum(page);
    m_driver->write(page);
}

void ControlM::onScannDevices()
{
    if (m_driver->isOpen())
        report(true);
    else
        DiscoverZephrinNANO::instance()->scan();
}

void ControlM::onDoscovered()
{
    report(!DiscoverZephrinNANO::instance()->devices().empty());
}

void ControlM::report(bool connected)
{
    emit connectStatus(connected ? Connected : Disconnected);
    emit statusChanged(connected ? tr("connected") : tr("disconnected"));
}
