// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Control/driver/HardwareZephrinNANO.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>

class CalibrationControl;
class ZephrinMDSP;

/// Keeps the receiver as the user wants it, whether one is there or not.
///
/// Between the shell and the driver: holds what must outlive a close (frequency, rate, gain and
/// calibration) and sends it to each device that is opened; looks for devices every 2 s while none
/// is open; tells whether one is there.
///
/// The frequency factor of the calibration is multiplied into what is sent to the device only: for
/// everyone else the receiver is tuned to the frequency that was asked for.
///
/// GUI thread only.
class ControlM : public QObject
{
    Q_OBJECT

public:
    /// dsp takes the samples and must not be null.
    explicit ControlM(std::shared_ptr<ZephrinMDSP> dsp, QObject *parent = nullptr);

    /// Closes the device.
    ~ControlM() override;

    /// Those that concern device and calibration. Ahead of the first open().
    void setRepairs(const Repairs &repairs);

    /// Opens device number id of the FIFO library's list, takes its calibration and tunes it. True
    /// also if one is open already; false for an id below 0 or a device that fails.
    bool open(int id);

    /// Stops the stream and closes the device, if one is open.
    void close();

    /// Starts the stream at the stored rate. True in any case: isStart() tells whether it runs.
    bool start();

    void stop();

    bool isOpen() const { return m_driver->isOpen(); }
    bool isStart() const { return m_driver->isStartStream(); }

    /// Tunes to f hertz, sent only if it is another than the last.
    void setFreq(double f);
    double freq() const { return m_freq; }

    /// Rate of the stream in hertz. A running stream is stopped and started with it 100 ms later;
    /// events are served meanwhile, and a stop(), a close() or the end of this object stays the
    /// last word.
    void setSampleRate(int rate);

    /// The device's code of a rate in hertz; code 0 for a rate that it does not have.
    static ZephrinSR toSr(int rate);

    /// True if the last scan found a receiver. Waits for a scan that is running.
    bool avalibleDevices() const;

    std::shared_ptr<CalibrationControl> calibration() const { return m_calibration; }

public slots:
    /// Wired for hosts and panels of other receivers; this one has none of it and ignores them.
    void setBypass(bool enable, bool dir);
    void setBypass(bool enable);
    void setAdcReg(quint16 data);
    void setAdcReset(bool state);

    /// Gain before the ADC in dB: -31.5 to 6. The level in the engine does not move with it.
    void setPreamp(float value);

    /// Calibration values by hand: dB, and factors.
    void setUserPreampCoeff(double value);
    void setUserFreqCoeff(double value);
    void setAdminPreampCoeff(double value);
    void setAdminFreqCoeff(double value);

    /// The calibration from the device's EEPROM and back. A page with a wrong checksum, or none, is
    /// logged and leaves all values as they are.
    void setReadCalibrations();
    void setWriteCalibrations();

signals:
    /// The connection as a text for the user, and as a number: 0 disconnected, 2 connected. Every
    /// 2 s. An open device counts as connected until it is closed.
    void statusChanged(QString str);
    void connectStatus(int status);

    /// The stream ended by itself and waits to be stopped.
    void stoped();

    /// A stream has been stopped, for whatever reason; a change of rate starts the next one later.
    void streamStopped();

    /// Never raised: this device is known by its place in the list.
    void openSerial(QString serial);

    void openChanged(bool state);

private slots:
    void onFreqCoeff(double value);
    void postInit();
    void onScannDevices();
    void onDoscovered();

private:
    void stopStream();
    void tune();
    void report(bool connected);

    std::unique_ptr<HardwareZephrinNANO> m_driver;
    std::shared_ptr<ZephrinMDSP> m_dsp;
    std::shared_ptr<CalibrationControl> m_calibration;
    double m_freq = 1800000.0; // Hz, before correction
    int m_sampleRate = 48000;  // Hz
    float m_preamp = 0.0f;     // dB
    double m_freqCoeff = 1.0;  // user factor times admin factor
    QTimer m_scanTimer;
    bool m_restart = false; // nobody has ended the stream since setSampleRate() began to wait
};
