// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

/// The host's meters. The device feeds the first three operations on its engine thread, once a
/// block; the host passes values on by the signals.
///
/// The reserved operations are the host's own and hold their places in its table of virtual
/// operations.
class SensorsAbstract : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Level at the converter's input, in-phase and quadrature part.
    virtual void rxAdc(uint receiver, float re, float im) = 0;

    /// Signal strength of a channel in dBm.
    virtual void rxDbm(uint receiver, uint channel, float value) = 0;

    /// True while wide FM carries a stereo pilot.
    virtual void wfmStereo(uint receiver, bool state) = 0;

    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual void reserved6() = 0;
    virtual void reserved7() = 0;
    virtual void reserved8() = 0;
    virtual void reserved9() = 0;
    virtual void reserved10() = 0;
    virtual void reserved11() = 0;
    virtual void reserved12() = 0;
    virtual void reserved13() = 0;
    virtual void reserved14() = 0;
    virtual void reserved15() = 0;
    virtual void reserved16() = 0;
    virtual void reserved17() = 0;
    virtual void reserved18() = 0;
    virtual void reserved19() = 0;
    virtual void reserved20() = 0;
    virtual void reserved21() = 0;
    virtual void reserved22() = 0;
    virtual void reserved23() = 0;
    virtual void reserved24() = 0;

public Q_SLOTS:
    /// Correction factor of the standing-wave meter.
    virtual void setSwrCoeff(float value) = 0;

Q_SIGNALS:
    void rxAdcChanged(uint receiver, float re, float im);
    void rxDbmChanged(uint receiver, uint channel, float value);
    void powerRmsChanged(float value);
    void powerPeakChanged(float value);
    void powerSwrChanged(float value);
    void wfmStereoChanged(uint receiver, bool state);
    void uChanged(float value);
    void iChanged(float value);
    void temperatureChanged(float value);
    void enableUChanged(bool state);
    void enableIChanged(bool state);
};
