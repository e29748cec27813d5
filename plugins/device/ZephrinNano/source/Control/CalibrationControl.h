// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

/// The calibration of the receiver at hand, and the level correction that follows from it.
///
/// Two sets add up, one of the maker and one of the user: levels in dB as a sum, frequency factors
/// as a product. The stream correction takes back what the attenuator does, so that a level in the
/// engine means the same at the antenna at any setting:
///
///     stream correction = user level + admin level - gain before the ADC      (all in dB)
///
/// A setter does nothing if the value is the old one within 1e-12 (0 is only 0). Otherwise it
/// raises the value's own signal, then streamPreampCoeffChanged(), also for the frequency factors.
/// GUI thread only.
class CalibrationControl : public QObject
{
    Q_OBJECT

public:
    explicit CalibrationControl(QObject *parent = nullptr);

    /// Values that are not finite are refused with a warning; else they are taken like any other.
    void setFiniteOnly(bool finiteOnly) { m_finiteOnly = finiteOnly; }

    double userPreampCoeff() const { return m_userPreampCoeff; }
    double userFreqCoeff() const { return m_userFreqCoeff; }
    double adminPreampCoeff() const { return m_adminPreampCoeff; }
    double adminFreqCoeff() const { return m_adminFreqCoeff; }

    /// Level correction of the stream, dB.
    double streamPreampCoeff() const;

    /// Raises streamPreampCoeffChanged() with the present value.
    void update();

public slots:
    void setUserPreampCoeff(double value);
    void setUserFreqCoeff(double value);
    void setAdminPreampCoeff(double value);
    void setAdminFreqCoeff(double value);

    /// Gain before the ADC, dB. Has no signal of its own.
    void setPreamp(double value);

signals:
    void userPreampCoeffChanged(double value);
    void userFreqChanged(double value);
    void adminPreampCoeffChanged(double value);
    void adminFreqChanged(double value);
    void streamPreampCoeffChanged(double value);

private:
    using Signal = void (CalibrationControl::*)(double);

    void set(double &member, double value, Signal changed);

    bool m_finiteOnly = false;
    double m_userPreampCoeff = 0.0; // dB
    double m_userFreqCoeff = 1.0;
    double m_adminPreampCoeff = 0.0; // dB
    double m_adminFreqCoeff = 1.0;
    double m_preamp = 0.0; // dB
};
