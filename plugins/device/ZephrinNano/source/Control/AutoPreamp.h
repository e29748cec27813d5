// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QTimer>
#include <QVariant>
#include <atomic>

/// Watches the ADC peak of the stream: reports overflow, and asks for another attenuation.
///
/// Every 100 ms the peak gathered since the last tick becomes a level in dBFS. In auto mode 21
/// ticks with data are a decision period (about 2.1 s): a period with overflow asks at once for 2
/// or 4 dB less gain; only 16 periods in a row without any (about 34 s) ask for more, by what
/// brings the highest level of that time up to -10 dBFS, and only if that is at least 4 dB. Down
/// fast, up slowly and in big steps, so that the gain does not hunt. The host applies the step:
/// nothing here touches the device.
///
/// Threads:
/// 1. Reader: setAdcValue(), once a read window. Two atomic exchanges, no lock.
/// 2. GUI: everything else; the timer lives on the thread that first calls instance().
class AutoPreamp : public QObject
{
    Q_OBJECT

public:
    /// The only one. It lives as long as the library.
    static AutoPreamp *instance();

    /// Peak word of a read window: bit 15 overflow, bits 13..0 magnitude. Thread 1.
    void setAdcValue(unsigned short value);

public slots:
    /// Restarts all counters and the 100 ms tick.
    void start();

    /// Stops the tick; the counters stay.
    void stop();

    /// Regulation on or off. A decision period in progress goes on with its counters of ticks and
    /// quiet periods; overflows and the highest level start anew.
    void setAuto(bool state);

signals:
    /// The ADC was driven over; once a tick, also without auto mode.
    void adcOverflow();

    /// Change the gain by dB: -4 or -2 on overflow, 4 or more after a quiet time.
    void deltaAtt(int dB);

private slots:
    void onUpdate();

private:
    AutoPreamp();

    void endPeriod();
    void raiseIfQuiet();

    static constexpr float kNoPeak = -100.0f; // dBFS, below any level that the 14 bits can have

    // Written by 1, taken by 2. A peak that comes between the reading and the clearing of these is
    // lost: one tick's value does not matter.
    std::atomic<bool> m_updated = false;
    std::atomic<unsigned short> m_adcValue = 0; // largest since the last tick

    int m_tick = 0;      // ticks with data in this decision period
    int m_quiet = 0;     // decision periods without overflow
    int m_overflows = 0; // in this decision period
    bool m_autoMode = false;
    float m_peak = kNoPeak; // highest level, dBFS
    QTimer m_timer;
};

/// Holds a fast changing value back: however often it changes, valueChanged() comes at most once a
/// period, with the latest, and not at all while it stays. Silent until setTimeout(). GUI thread.
class ValueTimeout : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

public slots:
    void setValue(QVariant val);

    /// Period in ms, limited to 10..1000; it begins now.
    void setTimeout(uint val);

signals:
    void valueChanged(QVariant val);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    QVariant m_value;
    bool m_changed = false; // since the last signal
    QBasicTimer m_timer;
};
