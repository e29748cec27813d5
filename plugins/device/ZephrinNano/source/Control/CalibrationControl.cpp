// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/CalibrationControl.h"

CalibrationControl::CalibrationControl(QObject *parent) : QObject(parent) { }

double CalibrationControl::streamPreampCoeff() const
{
    return m_userPreampCoeff + m_adminPreampCoeff - m_preamp;
}

void CalibrationControl::update()
{
    emit streamPreampCoeffChanged(streamPreampCoeff());
}

void CalibrationControl::setUserPreampCoeff(double value)
{
    set(m_userPreampCoeff, value, &CalibrationControl::userPreampCoeffChanged);
}

void CalibrationControl::setUserFreqCoeff(double value)
{
    set(m_userFreqCoeff, value, &CalibrationControl::userFreqChanged);
}

void CalibrationControl::setAdminPreampCoeff(double value)
{
    set(m_adminPreampCoeff, value, &CalibrationControl::adminPreampCoeffChanged);
}

void CalibrationControl::setAdminFreqCoeff(double value)
{
    set(m_adminFreqCoeff, value, &CalibrationControl::adminFreqChanged);
}

void CalibrationControl::setPreamp(double value)
{
    set(m_preamp, value, nullptr);
}

void CalibrationControl::set(double &member, double value, Signal changed)
{
    if (qFuzzyCompare(member, value))
        return;
    member = value;
    if (changed)
        (this->*changed)(value);
    update();
}
